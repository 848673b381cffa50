// Stands in for a program that uploads. It notes in the file "sent" of its folder what it is asked
// to send: its arguments on a line, or, without any, "begin" and the lines of its standard input.
// It sends nothing and ends with code 7 when its first argument, or "all" without any, is what the
// file "fails" holds.
#include <fstream>
#include <iostream>
#include <string>

int main(int count, char** words)
{
    const std::string first = count > 1 ? words[1] : "all";
    std::string fails;
    std::ifstream("fails", std::ios::binary) >> fails;
    if (fails == first)
        return 7;
    std::ofstream sent("sent", std::ios::binary | std::ios::app);
    if (count == 1)
        sent << "begin\n" << std::cin.rdbuf();
    for (int i = 1; i < count; ++i)
        sent << words[i] << (i + 1 < count ? ' ' : '\n');
    return 0;
}
