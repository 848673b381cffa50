#include "platform/file_errors.h"
#include "platform/posix/drive_files.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace kiv {

Descriptor PosixDriveFiles::OpenToRead(std::string_view path, struct stat& state)
{
    const std::string absolute = FileToUse(path, "read");
    TellOpening(absolute);
    int fd = -1;
    std::string native;
    const int error = names_.Reach(absolute, native, [&](const std::string& place) {
        // Without waiting for the other end of what turns out to be a pipe.
        fd = ::open(place.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        return fd >= 0 ? 0 : errno;
    });
    if (error != 0)
        RefuseWith("read", absolute, error);
    Descriptor file(fd);
    if (::fstat(fd, &state) != 0)
        RefuseWith("read", absolute, errno);
    if (!S_ISREG(state.st_mode))
        Refuse("read", absolute, kNoPlainFile);
    return file;
}

template <typename Bytes>
Bytes PosixDriveFiles::ReadAll(std::string_view path)
{
    struct stat state {};
    const Descriptor file = OpenToRead(path, state);
    Bytes bytes;
    const auto read = [&](std::size_t count) {
        if (const int error = ReadBytes(file.Get(), 0, count, bytes))
            RefuseWith("read", path, error);
        return bytes.size();
    };
    ReadWhole(path, static_cast<std::uint64_t>(state.st_size), read, [&] {
        if (::fstat(file.Get(), &state) != 0)
            RefuseWith("read", path, errno);
        return static_cast<std::uint64_t>(state.st_size);
    });
    return bytes;
}

std::string PosixDriveFiles::ReadFile(std::string_view path)
{
    std::string bytes = ReadAll<std::string>(path);
    TellRead(path, bytes);
    return bytes;
}

FileContent PosixDriveFiles::ReadContent(std::string_view path)
{
    FileContent content = ReadAll<FileContent>(path);
    TellRead(path, content.View());
    return content;
}

std::string PosixDriveFiles::ReadPart(std::string_view path, std::uint64_t offset,
                                      std::size_t count)
{
    struct stat state {};
    const Descriptor file = OpenToRead(path, state);
    const auto size = static_cast<std::uint64_t>(state.st_size);
    std::string bytes;
    if (offset >= size)
        return bytes;
    const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset));
    if (const int error = ReadBytes(file.Get(), static_cast<off_t>(offset), there, bytes))
        RefuseWith("read", path, error);
    return bytes;
}

} // namespace kiv
