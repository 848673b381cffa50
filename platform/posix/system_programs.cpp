#include "platform/command_lines.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/programs.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
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

/// A drive path as the started program knows it.
std::string NativePath(Drives& drives, const std::string& path)
{
    std::string native = drives.ToNative(path);
    return native.empty() ? ToUtf8(path) : native; // on no drive of ours
}

void AddWords(NativeCommand& command, Drives& drives, std::string_view arguments)
{
    for (const std::string& word : CutArguments(arguments))
        command.push_back(IsDrivePath(word) ? NativePath(drives, word) : ToUtf8(word));
}

NativeCommand MakeNative(Drives& drives, const Launch& launch)
{
    if (const std::optional<std::string> folder = ExplorerFolder(launch)) {
        const std::string opener = FindInPath("xdg-open");
        if (opener.empty())
            RefuseStart("explorer", {"no such program: xdg-open", kNoSuchProgram.hint});
        return {opener, NativePath(drives, *folder)};
    }
    for (const ProgramReading& reading : ProgramReadings(launch.command)) {
        std::string program = FindProgram(drives, reading.program);
        if (program.empty())
            continue;
        NativeCommand command{std::move(program)};
        AddWords(command, drives, FromChar(launch.command, reading.arguments + 1));
        if (!launch.file.empty())
            command.push_back(NativePath(drives, launch.file));
        AddWords(command, drives, launch.options);
        return command;
    }
    RefuseStart(Trim(launch.Text()), kNoSuchProgram);
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

} // namespace

void SystemPrograms::Start(const Launch& launch)
{
    NativeCommand command = MakeNative(drives_, launch);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& word : command)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string folder = drives_.ToNative(drives_.CurrentDirectory());
    const Failure failure = StartDetached(folder.c_str(), arguments.data());
    if (failure.error == 0)
        return;
    const std::string reason = SystemReason(failure.error);
    RefuseStart(FromUtf8(command[0]),
                failure.in_folder ? drives_.CurrentDirectory() + ": " + reason : reason);
}

} // namespace kiv
