// Writes the manual page or the shell's completion: kiv-cli-docs manual|completion FILE
#include "cli/docs.h"

#include <fstream>
#include <iostream>
#include <string_view>

int main(int count, char** arguments)
{
    const std::string_view what = count == 3 ? arguments[1] : "";
    if (what != "manual" && what != "completion") {
        std::cerr << "usage: kiv-cli-docs manual|completion FILE\n";
        return 2;
    }
    std::ofstream file(arguments[2], std::ios::binary);
    file << (what == "manual" ? kiv::ManualPage() : kiv::BashCompletion()) << std::flush;
    if (!file) {
        std::cerr << "cannot write " << arguments[2] << '\n';
        return 1;
    }
    return 0;
}
