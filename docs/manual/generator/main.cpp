// Makes the bodies of the manual's pages, and the index for its search: kiv-manual-bodies MANUAL
// SITE
#include "docs/manual/generator/bodies.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments)
{
    if (count != 3) {
        std::cerr << "usage: kiv-manual-bodies MANUAL SITE\n";
        return 2;
    }
    try {
        kiv::manual::WriteBodies(arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::cerr << "kiv-manual-bodies: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
