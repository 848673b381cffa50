#include "cli/run_cli.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#ifdef _WIN32
#include "platform/windows_system.h"
#include "platform/windows_text.h"

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#else
#include <unistd.h>
#endif

namespace {

#ifdef _WIN32

bool ErrIsTerminal()
{
    return _isatty(_fileno(stderr)) != 0;
}

std::optional<std::string> Variable(const char* name)
{
    const wchar_t* const value = _wgetenv(kiv::WideFromUtf8(name).c_str());
    return value != nullptr ? std::optional(kiv::Utf8FromWide(value)) : std::nullopt;
}

/// The arguments as UTF-8, whatever the code page of the process. Texts pass as they are.
std::vector<std::string> Arguments(int, char**)
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(kiv::Utf8FromWide(wide[i]));
    LocalFree(wide);
    return arguments;
}

#else

bool ErrIsTerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

std::optional<std::string> Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::vector<std::string> Arguments(int count, char** arguments)
{
    return {arguments + 1, arguments + count};
}

#endif

} // namespace

int main(int count, char** arguments)
{
    // With buffers of their own the streams also tell when reading fails.
    std::ios::sync_with_stdio(false);
    const kiv::CliSurroundings around{std::cin, std::cout, std::cerr, ErrIsTerminal(), Variable};
    return kiv::RunCli(Arguments(count, arguments), around);
}
