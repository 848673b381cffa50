#include "platform/posix/moving.h"

#include "platform/posix/paths.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace kiv {

namespace {

bool IsGone(const std::string& native)
{
    struct stat state {};
    return ::lstat(native.c_str(), &state) != 0 && errno == ENOENT;
}

bool IsThere(const std::string& native)
{
    struct stat state {};
    return ::lstat(native.c_str(), &state) == 0;
}

/// One name more, then one less: a link never lands on an existing name either.
int RenameByLink(const std::string& from, const std::string& to)
{
    int error = ::link(from.c_str(), to.c_str()) == 0 ? 0 : errno;
    if (error != 0 && !(MayBeDone(error) && NamesOfOneFile(from, to) > 1))
        return error;
    if (::unlink(from.c_str()) == 0)
        return 0;
    error = errno;
    if (MayBeDone(error) && IsGone(from))
        return 0;
    if (NamesOfOneFile(from, to) > 1) // else this is the file's last name
        ::unlink(to.c_str());         // the file has its old name alone, as before
    return error;
}

/// What became of a rename: the old name has gone, whatever was said.
int ErrorUnlessDone(int error, const std::string& from, const std::string& to)
{
    return MayBeDone(error) && IsGone(from) && IsThere(to) ? 0 : error;
}

} // namespace

bool MayBeDone(int error)
{
    return error == EIO || error == ESTALE || error == ETIMEDOUT;
}

nlink_t NamesOfOneFile(const std::string& a, const std::string& b)
{
    struct stat first {};
    struct stat second {};
    const bool is_one = ::lstat(a.c_str(), &first) == 0 && ::lstat(b.c_str(), &second) == 0 &&
                        first.st_ino == second.st_ino && first.st_dev == second.st_dev;
    return is_one ? first.st_nlink : 0;
}

int RenameToFree(const std::string& from, const std::string& to)
{
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return ErrorUnlessDone(errno, from, to);
#endif
    const int error = RenameByLink(from, to);
    const bool knows_no_links = error == EPERM || error == EOPNOTSUPP || error == ENOSYS;
    if (!knows_no_links)
        return error;
    struct stat state {};
    if (::lstat(to.c_str(), &state) == 0)
        return EEXIST;
    return errno == ENOENT ? MoveOver(from, to) : errno;
}

int MoveOver(const std::string& from, const std::string& to)
{
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return 0;
    return ErrorUnlessDone(errno, from, to);
}

int Exchange([[maybe_unused]] const std::string& a, [[maybe_unused]] const std::string& b)
{
#ifdef RENAME_EXCHANGE
    if (::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0)
        return 0;
    return errno == EINVAL ? ENOSYS : errno;
#else
    return ENOSYS;
#endif
}

int FollowLinks(std::string& native)
{
    constexpr int kMostLinks = 40;
    std::array<char, PATH_MAX> target{};
    for (int i = 0; i < kMostLinks; ++i) {
        const ssize_t size = ::readlink(native.c_str(), target.data(), target.size());
        if (size < 0) // it is no link, or nothing yet
            return errno == EINVAL || errno == ENOENT ? 0 : errno;
        const std::string_view link(target.data(), static_cast<std::size_t>(size));
        native =
            link.starts_with('/') ? std::string(link) : JoinNative(NativeFolderOf(native), link);
    }
    return ELOOP;
}

} // namespace kiv
