#include "tests/platform/posix/struck_calls.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace kiv {
namespace {

std::vector<Strike>& Current()
{
    static std::vector<Strike> strikes;
    return strikes;
}

/// What is to happen to this call; null: nothing.
Strike* StrikeAt(std::string_view call)
{
    for (Strike& strike : Current())
        if (strike.call == call)
            return &strike;
    return nullptr;
}

/// Does a call of the program that is tested, or what the test wants in its place.
template <typename... Arguments>
long Do(std::string_view name, long number, Arguments... arguments)
{
    Strike* const struck = StrikeAt(name);
    if (struck == nullptr || struck->spared-- > 0)
        return ::syscall(number, arguments...);
    const Strike strike = *struck;
    std::vector<Strike> others = std::exchange(Current(), {});
    if (strike.before)
        strike.before();
    const bool is_done = strike.error == 0 || strike.is_done_all_the_same;
    const long result = is_done ? ::syscall(number, arguments...) : -1;
    if (strike.after)
        strike.after();
    Current() = std::move(others);
    if (strike.error == 0)
        return result;
    errno = strike.error;
    return -1;
}

template <typename... Arguments>
int DoInt(std::string_view name, long number, Arguments... arguments)
{
    return static_cast<int>(Do(name, number, arguments...));
}

} // namespace

StruckCalls::StruckCalls(std::vector<Strike> strikes)
{
    Current() = std::move(strikes);
}

StruckCalls::~StruckCalls()
{
    Current().clear();
}

std::vector<std::string>& Flushed()
{
    static std::vector<std::string> flushed;
    return flushed;
}

} // namespace kiv

// In the place of those of the C library.

int fchmod(int fd, mode_t mode) noexcept
{
    return kiv::DoInt("fchmod", SYS_fchmod, fd, mode);
}

int fchown(int fd, uid_t owner, gid_t group) noexcept
{
    return kiv::DoInt("fchown", SYS_fchown, fd, owner, group);
}

int fcntl(int fd, int command, ...) // NOLINT(cert-dcl50-cpp): it is the C library's
{
    va_list arguments;
    va_start(arguments, command);
    const long argument = va_arg(arguments, long);
    va_end(arguments);
    const char* const name = command == F_DUPFD_CLOEXEC ? "dup" : "fcntl";
    return kiv::DoInt(name, SYS_fcntl, fd, command, argument);
}

int flock(int fd, int operation) noexcept
{
    return kiv::DoInt("flock", SYS_flock, fd, operation);
}

int link(const char* from, const char* to) noexcept
{
    return kiv::DoInt("link", SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat2(int old_folder, const char* from, int new_folder, const char* to,
              unsigned flags) noexcept
{
    const char* const name = flags == RENAME_EXCHANGE ? "exchange" : "renameat2";
    return kiv::DoInt(name, SYS_renameat2, old_folder, from, new_folder, to, flags);
}

int fsync(int fd)
{
    struct stat state {};
    ::fstat(fd, &state);
    kiv::Flushed().emplace_back(S_ISDIR(state.st_mode) ? "folder" : "file");
    return kiv::DoInt("fsync", SYS_fsync, fd);
}

ssize_t write(int fd, const void* bytes, size_t count)
{
    const kiv::Strike* const strike = kiv::StrikeAt("write");
    const bool falls_short = strike != nullptr && strike->spared > 0;
    return kiv::Do("write", SYS_write, fd, bytes, falls_short ? std::min<size_t>(count, 4) : count);
}
