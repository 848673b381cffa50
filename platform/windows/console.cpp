#include "platform/console.h"

#include "platform/windows/api.h"
#include "platform/windows/wide_text.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace kiv {

namespace {

/// The code page and the mode belong to the console, which outlives the program.
class WindowsConsole : public Console {
  public:
    WindowsConsole() : old_code_page_(GetConsoleOutputCP())
    {
        SetConsoleOutputCP(CP_UTF8);
        has_line_ = GetConsoleMode(err_, &old_mode_) != 0 &&
                    SetConsoleMode(err_, old_mode_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    }
    ~WindowsConsole() override
    {
        if (has_line_)
            SetConsoleMode(err_, old_mode_);
        if (old_code_page_ != 0)
            SetConsoleOutputCP(old_code_page_);
    }

    bool HasLine() const override { return has_line_; }
    bool OutIsTerminal() const override { return _isatty(_fileno(stdout)) != 0; }
    bool OutIsRead() const override { return true; }

  private:
    HANDLE err_ = GetStdHandle(STD_ERROR_HANDLE);
    UINT old_code_page_;
    DWORD old_mode_ = 0;
    bool has_line_ = false;
};

} // namespace

std::unique_ptr<Console> OpenConsole()
{
    return std::make_unique<WindowsConsole>();
}

/// Whatever the code page of the process is. Texts pass as they are.
std::vector<std::string> ProgramArguments(int, char**)
{
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(Utf8FromWide(wide[i]));
    LocalFree(wide);
    return arguments;
}

std::optional<std::string> ProcessVariable(const char* name)
{
    const wchar_t* const value = _wgetenv(WideFromUtf8(name).c_str());
    return value != nullptr ? std::optional(Utf8FromWide(value)) : std::nullopt;
}

} // namespace kiv
