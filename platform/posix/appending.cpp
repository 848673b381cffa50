#include "platform/posix/appending.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/moving.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kiv {

namespace {

/// What was written last without anything of others in between; from where to where in the file.
struct Piece {
    off_t begin = -1;
    off_t end = -1;
};

/// Not open: see errno. `is_made`: the file was not there before.
Descriptor OpenToAppend(const std::string& native, bool& is_made)
{
    constexpr int kFlags = O_WRONLY | O_APPEND | O_CLOEXEC;
    int fd = ::open(native.c_str(), kFlags);
    if (fd < 0 && errno == ENOENT) {
        fd = ::open(native.c_str(), kFlags | O_CREAT | O_EXCL, 0666);
        is_made = fd >= 0;
        if (fd < 0 && errno == EEXIST) // another program was faster
            fd = ::open(native.c_str(), kFlags);
    }
    return Descriptor(fd);
}

/// Only a write that falls short can be followed by one that fails, and then `piece` is known.
int WriteAtEnd(int fd, std::string_view bytes, Piece& piece)
{
    while (!bytes.empty()) {
        const ssize_t put = ::write(fd, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return put == 0 ? ENOSPC : errno;
        bytes.remove_prefix(static_cast<std::size_t>(put));
        if (bytes.empty())
            break;
        const off_t end = ::lseek(fd, 0, SEEK_CUR);
        if (end - put != piece.end)
            piece.begin = end - put;
        piece.end = end;
    }
    return 0;
}

/// Takes a piece away as long as it is the end of the file. Returns whether nothing is left.
bool TakeAway(int fd, const Piece& piece)
{
    struct stat state {};
    if (::fstat(fd, &state) != 0)
        return false;
    if (piece.end == state.st_size && ::ftruncate(fd, piece.begin) == 0)
        return piece.begin == 0;
    return state.st_size == 0;
}

} // namespace

int AppendTo(const std::string& native, std::string_view bytes)
{
    bool is_made = false;
    Descriptor file = OpenToAppend(native, is_made);
    if (!file.IsOpen())
        return errno;
    Piece piece;
    const int error = WriteAtEnd(file.Get(), bytes, piece);
    if (error == 0)
        return file.Close();
    struct stat state {};
    if (TakeAway(file.Get(), piece) && is_made && ::fstat(file.Get(), &state) == 0 &&
        IsSameFile(native, state))
        ::unlink(native.c_str());
    return error;
}

} // namespace kiv
