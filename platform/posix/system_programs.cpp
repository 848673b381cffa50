#include "platform/command_lines.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/file_marks.h"
#include "platform/posix/descriptor.h"
#include "platform/programs.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kiv {

namespace {

/// A program with its arguments, all in native words.
using NativeCommand = std::vector<std::string>;

/// The native path of a program that is named without a folder; empty when no folder of PATH has
/// it.
std::string FindInPath(std::string_view name)
{
    // Nothing in the program changes the environment.
    const char* const folders = std::getenv("PATH"); // NOLINT(concurrency-mt-unsafe)
    if (name.empty() || folders == nullptr)
        return {};
    for (const std::string_view folder : Split(folders, ':')) {
        if (folder.empty() || folder[0] != '/')
            continue; // relative to the process's directory, which is not the current one
        std::string place = std::string(folder).append("/").append(ToUtf8(name));
        struct stat state {};
        if (::stat(place.c_str(), &state) == 0 && S_ISREG(state.st_mode) &&
            ::access(place.c_str(), X_OK) == 0)
            return place;
    }
    return {};
}

/// The native path of a program as a command line names it; empty when there is none.
std::string FindProgram(Drives& drives, const std::string& program)
{
    const bool has_folder = program.find_first_of("\\/") != npos || HasDrive(program);
    for (const std::string& name : {program, program + ".exe"}) {
        if (!has_folder) {
            std::string place = FindInPath(name);
            if (!place.empty())
                return place;
        } else if (drives.FileExists(name)) {
            return drives.ToNative(name);
        }
    }
    return {};
}

/// The first reading of a command line that names a program, with its native path; "" for none.
ProgramReading ReadProgram(Drives& drives, std::string_view command)
{
    for (const ProgramReading& reading : ProgramReadings(command))
        if (std::string program = FindProgram(drives, reading.program); !program.empty())
            return {std::move(program), reading.arguments};
    return {};
}

/// A drive path as the started program knows it.
std::string NativePath(Drives& drives, const std::string& path)
{
    std::string native = drives.ToNative(path);
    return native.empty() ? ToUtf8(path) : native; // on no drive of ours
}

std::string NativeWord(Drives& drives, const std::string& word)
{
    return IsDrivePath(word) ? NativePath(drives, word) : ToUtf8(word);
}

void AddWords(NativeCommand& command, Drives& drives, std::string_view arguments)
{
    for (const std::string& word : CutArguments(arguments))
        command.push_back(NativeWord(drives, word));
}

/// A word with a mark stays one word, whatever is in the file's name.
void AddFilledWords(NativeCommand& command, Drives& drives, std::string_view arguments,
                    const Launch& launch)
{
    const std::string file = NativePath(drives, launch.file);
    for (const std::string& word : CutArguments(arguments))
        command.push_back(MarksIn(word).Any() ? FillMarks(ToUtf8(word), file, launch.line)
                                              : NativeWord(drives, FillMarks(word, {}, 0)));
}

NativeCommand MakeNative(Drives& drives, const Launch& launch)
{
    if (const std::optional<std::string> folder = ExplorerFolder(launch)) {
        const std::string opener = FindInPath("xdg-open");
        if (opener.empty())
            RefuseStart("explorer", {"no such program: xdg-open", kNoSuchProgram.hint});
        return {opener, NativePath(drives, *folder)};
    }
    const ProgramReading found = ReadProgram(drives, launch.command);
    if (found.program.empty())
        RefuseStart(Trim(launch.Text()), kNoSuchProgram);
    NativeCommand command{found.program};
    const std::string_view arguments = FromChar(launch.command, found.arguments + 1);
    if (launch.HasMarks())
        AddFilledWords(command, drives, arguments, launch);
    else
        AddWords(command, drives, arguments);
    if (!launch.file.empty() && !launch.HasFileMark())
        command.push_back(NativePath(drives, launch.file));
    AddWords(command, drives, launch.options);
    return command;
}

/// What the started process tells of its failure.
struct Failure {
    int error = 0;
    bool in_folder = false; // it could not go to its folder
};

/// Becomes the program. Runs in a child process, where little more than system calls is allowed.
Failure Become(const char* folder, char* const* arguments)
{
    if (::chdir(folder) != 0)
        return {errno, true};
    const int nothing = ::open("/dev/null", O_RDWR);
    for (int standard = 0; standard <= 2 && nothing >= 0; ++standard)
        ::dup2(nothing, standard);
    if (nothing > 2)
        ::close(nothing);
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL); // a signal that is ignored would stay so
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execv(arguments[0], arguments);
    return {errno, false};
}

/// Starts the command in a session of its own, as a child of nobody. The pipe is closed by the
/// program's start.
Failure StartDetached(const char* folder, char* const* arguments)
{
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return {errno, false};
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        const pid_t grandchild = ::fork();
        if (grandchild <= 0) {
            const Failure failure =
                grandchild == 0 ? Become(folder, arguments) : Failure{errno, false};
            [[maybe_unused]] const ssize_t told = ::write(pipe[1], &failure, sizeof failure);
        }
        ::_exit(0);
    }
    Failure failure;
    if (child < 0)
        failure.error = errno;
    ::close(pipe[1]);
    while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    Failure told;
    ssize_t got = 0;
    do
        got = ::read(pipe[0], &told, sizeof told);
    while (got < 0 && errno == EINTR);
    if (got == static_cast<ssize_t>(sizeof told))
        failure = told;
    ::close(pipe[0]);
    return failure;
}

/// A file without a name that holds `input`, to be read from its beginning; -1 on failure.
int InputFile(std::string_view input)
{
    std::FILE* const file = std::tmpfile();
    if (file == nullptr)
        return -1;
    const bool is_whole = std::fwrite(input.data(), 1, input.size(), file) == input.size() &&
                          std::fflush(file) == 0 && ::lseek(::fileno(file), 0, SEEK_SET) == 0;
    const int number = is_whole ? ::fcntl(::fileno(file), F_DUPFD_CLOEXEC, 0) : -1;
    std::fclose(file);
    return number;
}

constexpr int kNotStarted = 127; // as shells have it
constexpr int kSignalled = 128;

/// Becomes a program that is waited for, with `input` as its standard input. Runs in a child
/// process.
[[noreturn]] void BecomeHeard(const char* folder, char* const* arguments, int input)
{
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    if (::chdir(folder) == 0 && ::dup2(input, STDIN_FILENO) >= 0 &&
        ::dup2(STDERR_FILENO, STDOUT_FILENO) >= 0)
        ::execv(arguments[0], arguments);
    ::_exit(kNotStarted);
}

/// As waitpid, whatever signals come.
pid_t WaitFor(pid_t child, int& status, int options)
{
    pid_t ended = -1;
    do
        ended = ::waitpid(child, &status, options);
    while (ended < 0 && errno == EINTR);
    return ended;
}

using SteadyTime = std::chrono::steady_clock;

/// Waits for the end of a child, or until a time, and calls `meanwhile` often enough for a window
/// to stay alive. What waitpid gave last, 0: it still runs.
pid_t WaitUntil(SteadyTime::time_point until, pid_t child, int& status,
                const WhileRunning& meanwhile)
{
    constexpr std::chrono::milliseconds kLongestPause(40);
    pid_t ended = 0;
    // A short program is not to wait for a long pause.
    for (std::chrono::milliseconds pause(1);
         (ended = WaitFor(child, status, WNOHANG)) == 0 && SteadyTime::now() < until;
         pause = std::min(pause * 2, kLongestPause)) {
        meanwhile();
        std::this_thread::sleep_for(pause);
    }
    return ended;
}

/// Ends a child: kindly, and when it does not listen, for sure.
void EndChild(pid_t child)
{
    constexpr std::chrono::seconds kPatience(1);
    int status = 0;
    ::kill(child, SIGTERM);
    if (WaitUntil(SteadyTime::now() + kPatience, child, status, [] {}) != 0)
        return;
    ::kill(child, SIGKILL);
    WaitFor(child, status, 0);
}

/// Waits for a child as waitpid does; what `while_running` throws ends it.
pid_t WaitLookingIn(pid_t child, int& status, const WhileRunning& while_running)
{
    if (!while_running)
        return WaitFor(child, status, 0);
    try {
        return WaitUntil(SteadyTime::time_point::max(), child, status, while_running);
    } catch (...) {
        EndChild(child);
        throw;
    }
}

/// The exit code of a child; -1 when it could not be started.
int RunChild(const char* folder, char* const* arguments, int input,
             const WhileRunning& while_running)
{
    const pid_t child = ::fork();
    if (child == 0)
        BecomeHeard(folder, arguments, input);
    int status = 0;
    if (child < 0 || WaitLookingIn(child, status, while_running) <= 0)
        return -1;
    return WIFSIGNALED(status) ? kSignalled + WTERMSIG(status) : WEXITSTATUS(status);
}

/// The words as the system takes them: they must outlive what is returned.
std::vector<char*> ArgumentsOf(NativeCommand& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    return arguments;
}

} // namespace

int SystemPrograms::Run(const Launch& launch, std::string_view input,
                        const WhileRunning& while_running)
{
    NativeCommand command = MakeNative(drives_, launch);
    const std::vector<char*> arguments = ArgumentsOf(command);
    const std::string folder = drives_.ToNative(drives_.CurrentDirectory());
    const Descriptor file(InputFile(input));
    const int code =
        file.IsOpen() ? RunChild(folder.c_str(), arguments.data(), file.Get(), while_running) : -1;
    const int error = errno;
    if (code < 0)
        RefuseStart(FromUtf8(command[0]), SystemReason(error));
    return code;
}

bool SystemPrograms::Finds(std::string_view command)
{
    return !ReadProgram(drives_, command).program.empty();
}

Launch BrowserLaunch(const std::string& address)
{
    return {"xdg-open " + address};
}

void SystemPrograms::Start(const Launch& launch)
{
    NativeCommand command = MakeNative(drives_, launch);
    const std::vector<char*> arguments = ArgumentsOf(command);
    const std::string folder = drives_.ToNative(drives_.CurrentDirectory());
    const Failure failure = StartDetached(folder.c_str(), arguments.data());
    if (failure.error == 0)
        return;
    const std::string reason = SystemReason(failure.error);
    RefuseStart(FromUtf8(command[0]),
                failure.in_folder ? drives_.CurrentDirectory() + ": " + reason : reason);
}

} // namespace kiv
