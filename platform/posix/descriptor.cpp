#include "platform/posix/descriptor.h"

#include "platform/posix/large_memory.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <span>
#include <unistd.h>
#include <utility>

namespace kiv {

namespace {

/// `done` becomes how much was read.
int ReadInto(int fd, off_t offset, std::span<char> room, std::size_t& done)
{
    while (done < room.size()) {
        const ssize_t got =
            ::pread(fd, &room[done], room.size() - done, offset + static_cast<off_t>(done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return errno;
        if (got == 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    return 0;
}

} // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

Descriptor::~Descriptor()
{
    if (IsOpen())
        ::close(fd_);
}

void Descriptor::Reset(int fd)
{
    const Descriptor former(std::exchange(fd_, fd));
}

int Descriptor::Close()
{
    const int fd = std::exchange(fd_, -1);
    return ::close(fd) == 0 ? 0 : errno;
}

int ReadBytes(int fd, off_t offset, std::size_t count, std::string& bytes)
{
    bytes.reserve(count);
    Populate({bytes.data(), count});
    bytes.resize(count);
    std::size_t done = 0;
    const int error = ReadInto(fd, offset, {bytes.data(), count}, done);
    bytes.resize(done);
    return error;
}

int ReadBytes(int fd, off_t offset, std::size_t count, FileContent& bytes)
{
    GrowHeapFor(count);
    char* const room = bytes.MakeRoom(count);
    Populate({room, count});
    std::size_t done = 0;
    const int error = ReadInto(fd, offset, {room, count}, done);
    bytes.SetSize(done);
    return error;
}

int WriteBytes(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t put = ::write(fd, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            return errno;
        if (put == 0)
            return ENOSPC; // else it would be tried for ever
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    return 0;
}

bool HoldsBytes(int fd, std::string_view bytes)
{
    const std::size_t most = std::min<std::size_t>(bytes.size(), 64 * std::size_t{1024});
    const std::unique_ptr<char[]> held(new char[most]); // not zeroed: it is read into
    off_t offset = 0;
    while (!bytes.empty()) {
        const ssize_t got = ::pread(fd, held.get(), std::min(bytes.size(), most), offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0 || bytes.substr(0, static_cast<std::size_t>(got)) !=
                            std::string_view(held.get(), static_cast<std::size_t>(got)))
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(got));
        offset += got;
    }
    return true;
}

int FlushFile(int fd)
{
    int result = 0;
    do
        result = ::fsync(fd);
    while (result != 0 && errno == EINTR);
    // What cannot be flushed, for it lies in memory alone, is as safe as it can be.
    return result == 0 || errno == EINVAL || errno == ENOSYS ? 0 : errno;
}

int FlushDisk(const std::string& folder)
{
#ifdef __linux__
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        return ::syncfs(opened.Get()) == 0 ? 0 : errno;
    if (errno != EACCES)
        return errno;
#endif
    ::sync(); // knows no errors, and no single disk
    return 0;
}

int FlushFolder(const std::string& folder)
{
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.IsOpen())
        return FlushFile(opened.Get());
    return errno == EACCES ? 0 : errno; // one may write into a folder that one may not read
}

} // namespace kiv
