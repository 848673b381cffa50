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

/// One name more, then one less: a link never lands on an existing name either.
int RenameByLink(const std::string& from, const std::string& to)
{
    if (::link(from.c_str(), to.c_str()) != 0)
        return errno;
    if (::unlink(from.c_str()) == 0)
        return 0;
    const int error = errno;
    ::unlink(to.c_str()); // the file has its old name alone, as before
    return error;
}

} // namespace

int RenameToFree(const std::string& from, const std::string& to)
{
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
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
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
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
