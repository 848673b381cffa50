#include "platform/command_lines.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/file_marks.h"
#include "platform/programs.h"
#include "platform/windows/api.h"
#include "platform/windows/folders.h"
#include "platform/windows/handle.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace kiv {

namespace {

/// What Windows finds under a program's name in these folders; empty when there is none.
std::wstring FindIn(const wchar_t* folders, const std::string& name)
{
    const std::wstring wide = WideText(name);
    const DWORD size = ::SearchPathW(folders, wide.c_str(), L".exe", 0, nullptr, nullptr);
    std::wstring path(size, L'\0');
    path.resize(::SearchPathW(folders, wide.c_str(), L".exe", size, path.data(), nullptr));
    return path;
}

/// The native path of a program that is named without a folder, from where Windows keeps its
/// programs and from PATH; empty when there is none.
std::wstring FindInPath(const std::string& name)
{
    std::wstring program = FindIn(nullptr, name);
    if (program.empty() || LookForFolder(program) != 0)
        return program;
    // A folder of that name ended Windows' own search.
    const DWORD size = ::GetEnvironmentVariableW(L"PATH", nullptr, 0);
    std::wstring folders(size, L'\0');
    folders.resize(::GetEnvironmentVariableW(L"PATH", folders.data(), size));
    std::wistringstream rest(folders);
    for (std::wstring folder; std::getline(rest, folder, L';');) {
        program = folder.empty() ? std::wstring() : FindIn(folder.c_str(), name);
        if (!program.empty() && LookForFolder(program) != 0)
            return program;
    }
    return {};
}

/// The native path of a program as a command line names it; empty when there is none.
std::wstring FindProgram(Drives& drives, const std::string& program)
{
    if (program.find_first_of("\\/") == npos && !HasDrive(program))
        return FindInPath(program);
    for (const std::string& name : {program, program + ".exe"})
        if (drives.FileExists(name))
            return WideFromUtf8(drives.ToNative(name));
    return {};
}

/// A word as programs take it out of a command line again.
std::wstring Quoted(const std::wstring& word)
{
    if (!word.empty() && word.find_first_of(L" \t\"") == std::wstring::npos)
        return word;
    std::wstring quoted(1, L'"');
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"')
            quoted.append(backslashes + 1, L'\\'); // those before a quote count twice
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted.push_back(c);
    }
    return quoted.append(backslashes, L'\\').append(1, L'"');
}

/// A drive path as the started program knows it.
std::wstring NativePath(Drives& drives, const std::string& path)
{
    const std::string native = drives.ToNative(path);
    return native.empty() ? WideText(path) : WideFromUtf8(native); // on no drive of ours
}

/// The arguments as the program is to see them: as written, unless one names a file by what only
/// this program knows, a drive that stands for a folder or a reference.
std::wstring NativeArguments(Drives& drives, std::string_view arguments)
{
    std::wstring line;
    bool changed = false;
    for (const std::string& word : CutArguments(arguments)) {
        std::wstring native = WideText(word);
        if (IsDrivePath(word) || Contains(word, "&#")) {
            std::wstring known = NativePath(drives, word);
            if (known != WideText(AbsolutePath(word, drives.CurrentDirectory())) &&
                known != native) {
                native = std::move(known);
                changed = true;
            }
        }
        line.append(line.empty() ? L"" : L" ").append(Quoted(native));
    }
    return changed ? line : WideText(Trim(arguments));
}

/// The arguments of a command with marks. A word with a mark stays one word, whatever is in the
/// file's name.
std::wstring FilledArguments(Drives& drives, std::string_view arguments, const Launch& launch)
{
    const std::string file = Utf8FromWide(NativePath(drives, launch.file));
    std::wstring line;
    for (const std::string& word : CutArguments(arguments)) {
        std::wstring filled;
        if (MarksIn(word).Any())
            filled = WideFromUtf8(FillMarks(ToUtf8(word), file, launch.line));
        else if (const std::string plain = FillMarks(word, {}, 0); IsDrivePath(plain))
            filled = NativePath(drives, plain);
        else
            filled = WideText(plain);
        line.append(line.empty() ? L"" : L" ").append(Quoted(filled));
    }
    return line;
}

/// What explorer takes as one folder, whatever is in its name. It knows no backslash rule.
std::wstring ExplorerLine(Drives& drives, const std::string& folder)
{
    const std::wstring native = NativePath(drives, folder);
    const bool plain = native.find_first_of(L" ,;=") == std::wstring::npos;
    return plain ? native : L"\"" + native + L"\"";
}

struct NativeCommand {
    std::wstring program;
    std::wstring arguments;
};

/// The arguments of a launch in one line: those of the command, the file, the options.
std::wstring ArgumentLine(Drives& drives, const Launch& launch, std::size_t begin)
{
    std::wstring line;
    const auto add = [&](const std::wstring& more) {
        line.append(line.empty() || more.empty() ? L"" : L" ").append(more);
    };
    const std::string_view arguments = FromChar(launch.command, begin + 1);
    add(launch.HasMarks() ? FilledArguments(drives, arguments, launch)
                          : NativeArguments(drives, arguments));
    if (!launch.file.empty() && !launch.HasFileMark())
        add(Quoted(NativePath(drives, launch.file)));
    add(NativeArguments(drives, launch.options));
    return line;
}

NativeCommand MakeNative(Drives& drives, const Launch& launch)
{
    if (const std::optional<std::string> folder = ExplorerFolder(launch)) {
        const std::wstring explorer = FindInPath("explorer.exe");
        if (explorer.empty())
            RefuseStart(Trim(launch.Text()), kNoSuchProgram);
        return {explorer, ExplorerLine(drives, *folder)};
    }
    for (const ProgramReading& reading : ProgramReadings(launch.command)) {
        std::wstring program = FindProgram(drives, reading.program);
        if (!program.empty())
            return {std::move(program), ArgumentLine(drives, launch, reading.arguments)};
    }
    RefuseStart(Trim(launch.Text()), kNoSuchProgram);
}

/// A file that holds `input`, to be read from its beginning, and that goes when it is closed; not
/// open on failure.
WindowsHandle InputFile(std::string_view input)
{
    std::wstring folder(MAX_PATH + 1, L'\0');
    folder.resize(::GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
    std::wstring name(MAX_PATH, L'\0');
    if (::GetTempFileNameW(folder.c_str(), L"kiv", 0, name.data()) == 0)
        return WindowsHandle(nullptr);
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    WindowsHandle file(::CreateFileW(
        name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (file.IsOpen() &&
        (WriteBytes(file, input) != 0 || ::SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN) != 0))
        file.Close();
    return file;
}

/// This program's standard error as a started program gets it; not open where there is none.
WindowsHandle InheritedOutput()
{
    HANDLE copy = nullptr;
    const HANDLE own = ::GetStdHandle(STD_ERROR_HANDLE);
    const bool is_copied = own != nullptr && own != INVALID_HANDLE_VALUE &&
                           ::DuplicateHandle(::GetCurrentProcess(), own, ::GetCurrentProcess(),
                                             &copy, 0, TRUE, DUPLICATE_SAME_ACCESS) != 0;
    return WindowsHandle(is_copied ? copy : nullptr);
}

/// Waits for the end of a program; what `while_running` throws ends it. Whether that has worked.
bool WaitLookingIn(const WindowsHandle& running, const WhileRunning& while_running)
{
    constexpr DWORD kPause = 40; // milliseconds: a window stays alive
    DWORD result = WAIT_TIMEOUT;
    try {
        while ((result = ::WaitForSingleObject(running.Get(), while_running ? kPause : INFINITE)) ==
               WAIT_TIMEOUT)
            while_running();
    } catch (...) {
        ::TerminateProcess(running.Get(), 1);
        throw;
    }
    return result == WAIT_OBJECT_0;
}

} // namespace

bool SystemPrograms::Finds(std::string_view command)
{
    const std::vector<ProgramReading> readings = ProgramReadings(command);
    return std::any_of(readings.begin(), readings.end(), [&](const ProgramReading& reading) {
        return !FindProgram(drives_, reading.program).empty();
    });
}

Launch BrowserLaunch(const std::string& address)
{
    return {"rundll32 url.dll,FileProtocolHandler " + address};
}

void SystemPrograms::Start(const Launch& launch)
{
    const NativeCommand command = MakeNative(drives_, launch);
    std::wstring line = L"\"" + command.program + L"\" " + command.arguments;
    const std::wstring folder = WideFromUtf8(drives_.ToNative(drives_.CurrentDirectory()));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (launch.minimised) {
        start.dwFlags = STARTF_USESHOWWINDOW;
        start.wShowWindow = SW_SHOWMINNOACTIVE;
    }
    PROCESS_INFORMATION process{};
    // A console program gets a window of its own, and keeps off this one's output. Windows may
    // write into the line.
    if (::CreateProcessW(command.program.c_str(), line.data(), nullptr, nullptr, FALSE,
                         CREATE_NEW_CONSOLE, nullptr, folder.c_str(), &start, &process) == 0) {
        const DWORD error = ::GetLastError();
        const std::string reason = SystemReason(static_cast<int>(error));
        RefuseStart(Trim(launch.Text()), error == ERROR_DIRECTORY || LookForFolder(folder) != 0
                                             ? drives_.CurrentDirectory() + ": " + reason
                                             : reason);
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

int SystemPrograms::Run(const Launch& launch, std::string_view input,
                        const WhileRunning& while_running)
{
    const NativeCommand command = MakeNative(drives_, launch);
    std::wstring line = L"\"" + command.program + L"\" " + command.arguments;
    const std::wstring folder = WideFromUtf8(drives_.ToNative(drives_.CurrentDirectory()));
    const WindowsHandle file = InputFile(input);
    const WindowsHandle output = InheritedOutput();
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = file.Get();
    start.hStdOutput = start.hStdError = output.Get();
    PROCESS_INFORMATION process{};
    if (!file.IsOpen() || ::CreateProcessW(command.program.c_str(), line.data(), nullptr, nullptr,
                                           TRUE, output.IsOpen() ? 0 : CREATE_NO_WINDOW, nullptr,
                                           folder.c_str(), &start, &process) == 0)
        RefuseStart(Trim(launch.Text()), SystemReason(static_cast<int>(::GetLastError())));
    const WindowsHandle running(process.hProcess);
    ::CloseHandle(process.hThread);
    DWORD code = 1;
    if (!WaitLookingIn(running, while_running) || ::GetExitCodeProcess(running.Get(), &code) == 0)
        RefuseStart(Trim(launch.Text()), SystemReason(static_cast<int>(::GetLastError())));
    return static_cast<int>(code);
}

} // namespace kiv
