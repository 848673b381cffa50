// quiz_form KIND: the "<zuquiz2>" form of the lines on standard input, in the style of that kind.
#include "blocks/quizzes.h"
#include "tests/blocks/block_desk.h"

#include <iostream>
#include <string>
#include <vector>

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: quiz_form KIND\n";
        return 2;
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(std::cin, line);)
        lines.push_back(line);
    kiv::BlockDesk desk(lines);
    std::string form;
    kiv::zuquiz2(form, std::stoi(arguments[1]), desk.context);
    std::cout << form;
    return desk.reporter.shown.empty() ? 0 : 1;
}
