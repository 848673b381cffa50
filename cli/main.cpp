#include "cli/run_cli.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool ErrIsTerminal()
{
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

std::optional<std::string> Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace

int main(int count, char** arguments)
{
    const kiv::CliSurroundings around{std::cin, std::cout, std::cerr, ErrIsTerminal(), Variable};
    return kiv::RunCli(std::vector<std::string>(arguments + 1, arguments + count), around);
}
