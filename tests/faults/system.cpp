#include "faults/system.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kiv::faults {

void Fail(const std::string& what)
{
    throw std::runtime_error(what + ": " + std::system_category().message(errno));
}

std::string BytesOf(int fd)
{
    struct stat state {};
    if (::fstat(fd, &state) != 0)
        Fail("cannot look at an open file");
    std::string bytes(static_cast<std::size_t>(state.st_size), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got =
            ::pread(fd, &bytes[done], bytes.size() - done, static_cast<off_t>(done));
        if (got < 0)
            Fail("cannot read an open file");
        if (got == 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
}

std::string BytesOfFile(const std::string& native)
{
    const int fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0)
        Fail("cannot open " + native);
    std::string bytes = BytesOf(fd);
    ::close(fd);
    return bytes;
}

void WriteWholeFile(const std::string& native, std::string_view bytes)
{
    const int fd = ::open(native.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        Fail("cannot make " + native);
    while (!bytes.empty()) {
        const ssize_t put = ::write(fd, bytes.data(), bytes.size());
        if (put < 0)
            Fail("cannot write " + native);
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    ::close(fd);
}

std::string WhyNoMounts()
{
    if (::geteuid() != 0)
        return "it takes root to mount a file system";
    static const bool own = ::unshare(CLONE_NEWNS) == 0 &&
                            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return own ? "" : "no mounts of one's own are allowed here";
}

} // namespace kiv::faults
