// kiv-cli on a disk that is far away: each call on a file waits first, a millisecond or as many
// microseconds as KIV_BENCH_DELAY says. As servers do, it has no files without a name, unless
// KIV_BENCH_UNNAMED is set. The linker leads every call through here (--wrap).
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

long Delay()
{
    const char* const given = std::getenv("KIV_BENCH_DELAY");
    return given == nullptr ? 1000 : std::atol(given);
}

void Wait()
{
    static const long microseconds = Delay();
    const int error = errno;
    const timespec time{microseconds / 1'000'000, microseconds % 1'000'000 * 1000};
    ::nanosleep(&time, nullptr);
    errno = error;
}

} // namespace

// The names are the linker's.
// NOLINTBEGIN(bugprone-reserved-identifier,bugprone-macro-parentheses)
#define KIV_SLOW(type, name, parameters, arguments)                                                \
    type __real_##name parameters;                                                                 \
    type __wrap_##name parameters;                                                                 \
    type __wrap_##name parameters                                                                  \
    {                                                                                              \
        Wait();                                                                                    \
        return __real_##name arguments;                                                            \
    }

extern "C" {

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, mode_t mode);
/// Who gives no mode lets anything stand in its place, which is not looked at.
int __wrap_open(const char* path, int flags, mode_t mode)
{
    Wait();
    if ((flags & O_TMPFILE) == O_TMPFILE && std::getenv("KIV_BENCH_UNNAMED") == nullptr) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return __real_open(path, flags, mode);
}

KIV_SLOW(int, close, (int fd), (fd))
KIV_SLOW(ssize_t, pread, (int fd, void* to, std::size_t size, off_t at), (fd, to, size, at))
KIV_SLOW(ssize_t, write, (int fd, const void* from, std::size_t size), (fd, from, size))
KIV_SLOW(int, stat, (const char* path, struct stat* state), (path, state))
KIV_SLOW(int, lstat, (const char* path, struct stat* state), (path, state))
KIV_SLOW(int, fstat, (int fd, struct stat* state), (fd, state))
KIV_SLOW(int, faccessat, (int fd, const char* path, int mode, int flags), (fd, path, mode, flags))
KIV_SLOW(int, link, (const char* from, const char* to), (from, to))
KIV_SLOW(int, linkat, (int from_fd, const char* from, int to_fd, const char* to, int flags),
         (from_fd, from, to_fd, to, flags))
KIV_SLOW(int, unlink, (const char* path), (path))
KIV_SLOW(int, rename, (const char* from, const char* to), (from, to))
KIV_SLOW(int, renameat2,
         (int from_fd, const char* from, int to_fd, const char* to, unsigned int flags),
         (from_fd, from, to_fd, to, flags))
KIV_SLOW(int, fchmod, (int fd, mode_t mode), (fd, mode))
KIV_SLOW(ssize_t, llistxattr, (const char* path, char* names, std::size_t size),
         (path, names, size))
KIV_SLOW(int, fremovexattr, (int fd, const char* name), (fd, name))
KIV_SLOW(ssize_t, readlink, (const char* path, char* to, std::size_t size), (path, to, size))
KIV_SLOW(DIR*, opendir, (const char* path), (path))
KIV_SLOW(DIR*, fdopendir, (int fd), (fd))

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier,bugprone-macro-parentheses)
