#include "platform/posix/writing.h"

#include "platform/posix/paths.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

namespace kiv {

namespace {

constexpr mode_t kModeBits = 07777;
constexpr mode_t kNewMode = 0666; // less the process's mask
constexpr mode_t kPrivateMode = 0600;

std::string TemporaryName(const std::string& native)
{
    static std::atomic<unsigned> number{0};
    const std::string name =
        ".kiv-" + std::to_string(::getpid()) + "-" + std::to_string(++number) + ".tmp";
    return JoinNative(NativeFolderOf(native), name);
}

/// Content, owner and mode of a file that is to take the place of `old`, or of a new one.
int Fill(int fd, std::string_view bytes, const struct stat* old)
{
    const int error = WriteBytes(fd, bytes);
    if (error != 0 || old == nullptr)
        return error;
    struct stat state {};
    if (::fstat(fd, &state) != 0)
        return errno;
    // The owner is kept where that is allowed. It comes first, for it may clear bits of the
    // mode.
    const bool other_owner = state.st_uid != old->st_uid || state.st_gid != old->st_gid;
    if (other_owner && ::fchown(fd, old->st_uid, old->st_gid) != 0 && errno != EPERM)
        return errno;
    return ::fchmod(fd, old->st_mode & kModeBits) == 0 ? 0 : errno;
}

int MoveOver(const std::string& from, const std::string& to)
{
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

/// For file systems that want a name for every file: writes under a temporary one.
int PlaceNamed(const std::string& native, std::string_view bytes, const struct stat* old)
{
    const mode_t mode = old == nullptr ? kNewMode : kPrivateMode;
    std::string temporary;
    int fd = -1;
    do {
        temporary = TemporaryName(native);
        fd = ::open(temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, mode);
    } while (fd < 0 && errno == EEXIST);
    if (fd < 0)
        return errno;
    Descriptor draft(fd);
    int error = Fill(draft.Get(), bytes, old);
    if (const int close_error = draft.Close(); error == 0)
        error = close_error;
    if (error == 0)
        error = old == nullptr ? RenameToFree(temporary, native) : MoveOver(temporary, native);
    if (error != 0)
        ::unlink(temporary.c_str());
    return error;
}

#ifdef O_TMPFILE

/// Gives the open file, which has no name yet, a name that is free.
int GiveName(int fd, const std::string& native)
{
    if (::linkat(fd, "", AT_FDCWD, native.c_str(), AT_EMPTY_PATH) == 0)
        return 0;
    if (errno != ENOENT)
        return errno;
    // Older kernels allow that to root alone, and say "no such file" to everybody else.
    const std::string self = "/proc/self/fd/" + std::to_string(fd);
    const int result =
        ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, native.c_str(), AT_SYMLINK_FOLLOW);
    return result == 0 ? 0 : errno;
}

/// Gives the filled draft its place: at once when that is free, else by a rename over the old file.
int PlaceDraft(int fd, const std::string& native, bool over_old)
{
    if (!over_old)
        return GiveName(fd, native);
    std::string temporary;
    int error = EEXIST;
    while (error == EEXIST) {
        temporary = TemporaryName(native);
        error = GiveName(fd, temporary);
    }
    if (error == 0 && (error = MoveOver(temporary, native)) != 0)
        ::unlink(temporary.c_str());
    return error;
}

/// The draft has no name before it is whole, so nothing is left behind when the process is killed.
int Place(const std::string& native, std::string_view bytes, const struct stat* old)
{
    const std::string folder(NativeFolderOf(native));
    const mode_t mode = old == nullptr ? kNewMode : kPrivateMode;
    const Descriptor draft(::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
    if (!draft.IsOpen()) {
        const bool unknown = errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL;
        return unknown ? PlaceNamed(native, bytes, old) : errno;
    }
    if (const int error = Fill(draft.Get(), bytes, old))
        return error;
    const int error = PlaceDraft(draft.Get(), native, old != nullptr);
    // Where a draft cannot get a name, for want of /proc or by a ban on links, it begins with one.
    return error == 0 || error == EEXIST ? error : PlaceNamed(native, bytes, old);
}

#else

int Place(const std::string& native, std::string_view bytes, const struct stat* old)
{
    return PlaceNamed(native, bytes, old);
}

#endif

/// Has the kernel give a large buffer its memory at once and not page by page, at the first touch
/// of each. A kernel that cannot do so refuses.
void Populate([[maybe_unused]] char* buffer, [[maybe_unused]] std::size_t size)
{
#ifdef MADV_POPULATE_WRITE
    constexpr std::size_t kLarge = std::size_t{256} * 1024;
    if (size < kLarge)
        return;
    static const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t skipped = page - reinterpret_cast<std::uintptr_t>(buffer) % page;
    ::madvise(buffer + skipped, (size - skipped) / page * page, MADV_POPULATE_WRITE);
#endif
}

} // namespace

Descriptor::~Descriptor()
{
    if (IsOpen())
        ::close(fd_);
}

int Descriptor::Close()
{
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0 ? 0 : errno;
}

int ReadBytes(int fd, off_t offset, std::size_t count, std::string& bytes)
{
    bytes.reserve(count);
    Populate(bytes.data(), count);
    bytes.resize(count);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got =
            ::pread(fd, &bytes[done], count - done, offset + static_cast<off_t>(done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return errno;
        if (got == 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return 0;
}

int WriteBytes(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t put = ::write(fd, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            return errno;
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

int WriteNew(const std::string& native, std::string_view bytes)
{
    return Place(native, bytes, nullptr);
}

int WriteOver(const std::string& native, const struct stat& old, std::string_view bytes)
{
    return Place(native, bytes, &old);
}

int RenameToFree(const std::string& from, const std::string& to)
{
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
#endif
    // A link never lands on an existing name either.
    if (::link(from.c_str(), to.c_str()) == 0)
        return ::unlink(from.c_str()) == 0 ? 0 : errno;
    if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS)
        return errno;
    struct stat state {};
    if (::lstat(to.c_str(), &state) == 0)
        return EEXIST;
    return MoveOver(from, to);
}

std::string FollowLinks(std::string native)
{
    constexpr int kMostLinks = 40;
    std::array<char, PATH_MAX> target{};
    for (int i = 0; i < kMostLinks; ++i) {
        const ssize_t size = ::readlink(native.c_str(), target.data(), target.size());
        if (size <= 0)
            break;
        const std::string_view link(target.data(), static_cast<std::size_t>(size));
        native = link[0] == '/' ? std::string(link) : JoinNative(NativeFolderOf(native), link);
    }
    return native;
}

} // namespace kiv
