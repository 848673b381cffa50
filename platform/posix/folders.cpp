#include "platform/posix/folders.h"

#include <cerrno>
#include <dirent.h>
#include <memory>
#ifdef __linux__
#include <linux/magic.h>
#include <sys/vfs.h>
#endif

namespace kiv {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

} // namespace

bool IsMissing(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

bool IsAbsent(int error)
{
    return IsMissing(error) || error == ENAMETOOLONG;
}

int LookForFolder(const std::string& native)
{
    struct stat state {};
    if (::stat(native.c_str(), &state) != 0)
        return errno;
    return S_ISDIR(state.st_mode) ? 0 : ENOTDIR;
}

int ForEachName(const std::string& folder, const TakeName& take)
{
    return ForEachName(folder, nullptr, take);
}

int ForEachName(const std::string& folder, const SkipFolder& skip, const TakeName& take)
{
    const std::unique_ptr<DIR, CloseFolder> handle(::opendir(folder.c_str()));
    if (!handle)
        return errno;
    struct stat state {};
    if (skip && ::fstat(::dirfd(handle.get()), &state) != 0)
        return errno;
    if (skip && skip(state))
        return 0;
    for (;;) {
        errno = 0;
        // Each handle is read by one thread.
        const dirent* const entry = ::readdir(handle.get()); // NOLINT(concurrency-mt-unsafe)
        if (entry == nullptr)
            return errno;
        const std::string_view name(&entry->d_name[0]);
        if (name != "." && name != "..")
            take(name, entry->d_type);
    }
}

bool TellsAtClosing([[maybe_unused]] const std::string& folder)
{
#ifdef __linux__
    struct statfs disk {};
    if (::statfs(folder.c_str(), &disk) != 0)
        return true;
    switch (static_cast<unsigned long>(disk.f_type)) {
    case BTRFS_SUPER_MAGIC:
    case EXT4_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case XFS_SUPER_MAGIC:
        return false;
    default:
        return true;
    }
#else
    return true;
#endif
}

} // namespace kiv
