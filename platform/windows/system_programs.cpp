#include "platform/command_lines.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/programs.h"
#include "platform/windows/api.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <optional>
#include <sstream>

namespace kiv {

namespace {

/// What the system finds under a program's name in these folders; empty when there is none.
std::wstring FindIn(const wchar_t* folders, const std::string& name)
{
    const std::wstring wide = WideText(name);
    const DWORD size = ::SearchPathW(folders, wide.c_str(), L".exe", 0, nullptr, nullptr);
    std::wstring path(size, L'\0');
    path.resize(::SearchPathW(folders, wide.c_str(), L".exe", size, path.data(), nullptr));
    return path;
}

/// The native path of a program that is named without a folder, from where the system keeps its
/// programs and from PATH; empty when there is none.
std::wstring FindInPath(const std::string& name)
{
    std::wstring program = FindIn(nullptr, name);
    if (program.empty() || !IsFolder(program))
        return program;
    // A folder of that name ended the system's own search.
    const DWORD size = ::GetEnvironmentVariableW(L"PATH", nullptr, 0);
    std::wstring folders(size, L'\0');
    folders.resize(::GetEnvironmentVariableW(L"PATH", folders.data(), size));
    std::wistringstream rest(folders);
    for (std::wstring folder; std::getline(rest, folder, L';');) {
        program = folder.empty() ? std::wstring() : FindIn(folder.c_str(), name);
        if (!program.empty() && !IsFolder(program))
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

/// The arguments as the program is to see them: as written, unless one names a file by what only
/// this program knows, a drive that stands for a folder or a reference.
std::wstring NativeArguments(Drives& drives, std::string_view arguments)
{
    std::wstring line;
    bool changed = false;
    // A first word of its own keeps the rules of the first word from the arguments.
    const std::vector<std::string> words = CutCommandLine(std::string("x ").append(arguments));
    for (std::size_t i = 1; i < words.size(); ++i) {
        std::string native = ToUtf8(words[i]);
        if (IsDrivePath(words[i]) || Contains(words[i], "&#")) {
            const std::string known = drives.ToNative(words[i]);
            const bool differs = !known.empty() &&
                                 known != ToUtf8(AbsolutePath(words[i], drives.CurrentDirectory()));
            if (differs)
                native = known;
            changed = changed || differs;
        }
        line.append(i > 1 ? L" " : L"").append(Quoted(WideFromUtf8(native)));
    }
    return changed ? line : WideText(arguments);
}

/// What explorer takes as one folder, whatever is in its name. It knows no backslash rule.
std::wstring ExplorerLine(Drives& drives, std::string_view folder)
{
    const std::wstring native = WideFromUtf8(drives.ToNative(folder));
    const bool plain = native.find_first_of(L" ,;=") == std::wstring::npos;
    return plain ? native : L"\"" + native + L"\"";
}

struct NativeCommand {
    std::wstring program;
    std::wstring arguments;
};

NativeCommand MakeNative(Drives& drives, const std::string& command_line)
{
    if (const std::optional<std::string_view> folder = ExplorerFolder(command_line)) {
        const std::wstring explorer = FindInPath("explorer.exe");
        if (explorer.empty())
            Refuse("start", Trim(command_line), "no such program");
        return {explorer, ExplorerLine(drives, *folder)};
    }
    for (const ProgramReading& reading : ProgramReadings(command_line)) {
        std::wstring program = FindProgram(drives, reading.program);
        if (!program.empty())
            return {std::move(program),
                    NativeArguments(drives, FromChar(command_line, reading.arguments + 1))};
    }
    Refuse("start", Trim(command_line), "no such program");
}

} // namespace

void SystemPrograms::Start(const std::string& command_line, bool minimised)
{
    const NativeCommand command = MakeNative(drives_, command_line);
    std::wstring line = L"\"" + command.program + L"\" " + command.arguments;
    const std::wstring folder = WideFromUtf8(drives_.ToNative(drives_.CurrentDirectory()));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (minimised) {
        start.dwFlags = STARTF_USESHOWWINDOW;
        start.wShowWindow = SW_SHOWMINNOACTIVE;
    }
    PROCESS_INFORMATION process{};
    // A console program gets a window of its own, and keeps off this one's output. The system may
    // write into the line.
    if (::CreateProcessW(command.program.c_str(), line.data(), nullptr, nullptr, FALSE,
                         CREATE_NEW_CONSOLE, nullptr, folder.c_str(), &start, &process) == 0) {
        const DWORD error = ::GetLastError();
        const std::string reason = SystemReason(static_cast<int>(error));
        Refuse("start", Trim(command_line),
               error == ERROR_DIRECTORY || !IsFolder(folder)
                   ? drives_.CurrentDirectory() + ": " + reason
                   : reason);
    }
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

} // namespace kiv
