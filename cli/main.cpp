#include "cli/no_memory.h"
#include "cli/run_cli.h"
#include "platform/process.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#ifdef _WIN32
#include "platform/windows/api.h"
#include "platform/windows/wide_text.h"

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#else
#include <unistd.h>
#endif

namespace {

#ifdef _WIN32

/// While it lives, the console shows UTF-8 and knows the codes that a terminal line is drawn with.
/// Both belong to the console, which outlives the program.
class Utf8Console {
  public:
    Utf8Console() : old_code_page_(GetConsoleOutputCP())
    {
        SetConsoleOutputCP(CP_UTF8);
        has_line_ = GetConsoleMode(err_, &old_mode_) != 0 &&
                    SetConsoleMode(err_, old_mode_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;
    ~Utf8Console()
    {
        if (has_line_)
            SetConsoleMode(err_, old_mode_);
        if (old_code_page_ != 0)
            SetConsoleOutputCP(old_code_page_);
    }

    /// Whether standard error is a console on which a line can be drawn over.
    bool HasLine() const { return has_line_; }

  private:
    HANDLE err_ = GetStdHandle(STD_ERROR_HANDLE);
    UINT old_code_page_;
    DWORD old_mode_ = 0;
    bool has_line_ = false;
};

std::optional<std::string> Variable(const char* name)
{
    const wchar_t* const value = _wgetenv(kiv::WideFromUtf8(name).c_str());
    return value != nullptr ? std::optional(kiv::Utf8FromWide(value)) : std::nullopt;
}

bool OutIsTerminal()
{
    return _isatty(_fileno(stdout)) != 0;
}

/// The arguments as UTF-8, whatever the code page of the process. Texts pass as they are.
std::vector<std::string> Arguments(int, char**)
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(kiv::Utf8FromWide(wide[i]));
    LocalFree(wide);
    return arguments;
}

#else

/// A terminal shows UTF-8 as it is.
class Utf8Console {
  public:
    static bool HasLine() { return isatty(STDERR_FILENO) != 0; }
};

std::optional<std::string> Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

bool OutIsTerminal()
{
    return isatty(STDOUT_FILENO) != 0;
}

std::vector<std::string> Arguments(int count, char** arguments)
{
    return {arguments + 1, arguments + count};
}

#endif

} // namespace

int main(int count, char** arguments)
{
    kiv::PrepareProcess();
    kiv::EndWellWithoutMemory(count, arguments);
    // With buffers of their own the streams also tell when reading fails.
    std::ios::sync_with_stdio(false);
    const Utf8Console console;
    const kiv::CliSurroundings around{std::cin,          std::cout, std::cerr,
                                      console.HasLine(), Variable,  OutIsTerminal()};
    return kiv::RunCli(Arguments(count, arguments), around);
}
