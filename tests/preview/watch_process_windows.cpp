#include "watch_process.h"

#include "platform/windows/api.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

/// A word of a command line. None that the tests give ends in "\" and has a blank.
std::wstring Quoted(const std::wstring& word)
{
    return word.find(L' ') == std::wstring::npos && !word.empty() ? word : L'"' + word + L'"';
}

/// A file that a child writes at its end, while others read it.
HANDLE Output(const fs::path& file)
{
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return ::CreateFileW(file.c_str(), FILE_APPEND_DATA | SYNCHRONIZE,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

class CliProcess::Child {
  public:
    Child(const DriveFolder& drive, std::wstring line)
    {
        // Ctrl+Break comes by way of a console that both share; there may be one already.
        ::AllocConsole();
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = Output(drive.Native("out"));
        start.hStdError = Output(drive.Native("err"));
        const bool is_started =
            ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP,
                             nullptr, nullptr, &start, &process_) != 0;
        EXPECT_TRUE(is_started) << "error " << ::GetLastError();
        ::CloseHandle(start.hStdOutput);
        ::CloseHandle(start.hStdError);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        ::CloseHandle(process_.hThread);
        ::CloseHandle(process_.hProcess);
    }

    bool Break() const
    {
        return ::GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, process_.dwProcessId) != 0;
    }
    void Kill() const { ::TerminateProcess(process_.hProcess, 9); }
    int ExitCode() const
    {
        DWORD code = 0;
        ::WaitForSingleObject(process_.hProcess, INFINITE);
        ::GetExitCodeProcess(process_.hProcess, &code);
        return static_cast<int>(code);
    }

  private:
    PROCESS_INFORMATION process_{};
};

CliProcess::CliProcess(const DriveFolder& drive, const std::vector<std::string>& arguments,
                       int /*own_out*/)
    : drive_(drive)
{
    drive.Put("out");
    drive.Put("err");
    std::wstring line = Quoted(fs::absolute(KIV_CLI).make_preferred().wstring()) + L" --drive-c " +
                        Quoted(drive.Root().wstring());
    for (const std::string& argument : arguments)
        line += L" " + Quoted(PathOf(argument).wstring());
    child_ = std::make_unique<Child>(drive, std::move(line));
}

CliProcess::~CliProcess()
{
    if (child_)
        End(Ending::killed);
}

int CliProcess::End(Ending ending)
{
    const std::unique_ptr<Child> child = std::move(child_);
    const bool is_asked = ending == Ending::own || (ending != Ending::killed && child->Break());
    if (!is_asked)
        child->Kill();
    const int code = child->ExitCode();
    return is_asked ? code : kCannotAsk;
}

} // namespace kiv::test
