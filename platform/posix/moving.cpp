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
    const bool was_free = IsGone(to);
    int error = ::link(from.c_str(), to.c_str()) == 0 ? 0 : errno;
    // A server that is asked twice finds the name taken by what it has done at the first time.
    const bool may_be_done = MayBeDone(error) || (error == EEXIST && was_free);
    if (error != 0 && !(may_be_done && NamesOfOneFile(from, to) > 1))
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

bool IsSameFile(const std::string& native, const struct stat& known)
{
    struct stat state {};
    return ::lstat(native.c_str(), &state) == 0 && state.st_ino == known.st_ino &&
           state.st_dev == known.st_dev;
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

std::string SaveBeside(const std::string& temporary, const std::string& native)
{
    constexpr int kMostNames = 1000;
    for (int i = 1; i < kMostNames; ++i) {
        std::string saved = native + (i == 1 ? ".saved" : ".saved" + std::to_string(i));
        const int error = RenameToFree(temporary, saved);
        if (error == 0)
            return saved;
        if (error != EEXIST)
            break;
    }
    return {};
}

int Exchange([[maybe_unused]] const std::string& a, [[maybe_unused]] const std::string& b)
{
#ifdef RENAME_EXCHANGE
    struct stat first {};
    const bool is_known = ::lstat(a.c_str(), &first) == 0;
    if (::renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE) == 0)
        return 0;
    const int error = errno;
    if (is_known && MayBeDone(error) && IsSameFile(b, first))
        return 0;
    return error == EINVAL ? ENOSYS : error;
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
