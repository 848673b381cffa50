#include "faults/calls.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/syscall.h>

namespace kiv::faults {

namespace {

constexpr std::array kCallKinds = std::to_array<CallKind>({
    {SYS_read, "read", Role::read},
    {SYS_write, "write", Role::write},
    {SYS_open, "open", Role::open, 0},
    {SYS_close, "close", Role::close},
    {SYS_stat, "stat", Role::look, 0},
    {SYS_fstat, "fstat", Role::look},
    {SYS_lstat, "lstat", Role::look, 0},
    {SYS_mmap, "mmap", Role::map},
    {SYS_pread64, "pread", Role::read},
    {SYS_pwrite64, "pwrite", Role::write},
    {SYS_readv, "readv", Role::read},
    {SYS_writev, "writev", Role::write},
    {SYS_access, "access", Role::look, 0},
    {SYS_sendfile, "sendfile", Role::copy},
    {SYS_clone, "clone", Role::start},
    {SYS_fork, "fork", Role::start},
    {SYS_vfork, "vfork", Role::start},
    {SYS_execve, "execve", Role::start, 0},
    {SYS_fcntl, "fcntl", Role::lock},
    {SYS_flock, "flock", Role::lock},
    {SYS_fsync, "fsync", Role::flush},
    {SYS_fdatasync, "fdatasync", Role::flush},
    {SYS_truncate, "truncate", Role::resize, 0},
    {SYS_ftruncate, "ftruncate", Role::resize},
    {SYS_getdents, "getdents", Role::read},
    {SYS_getcwd, "getcwd", Role::where},
    {SYS_chdir, "chdir", Role::where, 0},
    {SYS_rename, "rename", Role::rename, 1},
    {SYS_mkdir, "mkdir", Role::make_folder, 0},
    {SYS_rmdir, "rmdir", Role::unlink, 0},
    {SYS_creat, "creat", Role::open, 0},
    {SYS_link, "link", Role::link, 1},
    {SYS_unlink, "unlink", Role::unlink, 0},
    {SYS_symlink, "symlink", Role::link, 1},
    {SYS_readlink, "readlink", Role::look, 0},
    {SYS_chmod, "chmod", Role::attributes, 0},
    {SYS_fchmod, "fchmod", Role::attributes},
    {SYS_chown, "chown", Role::attributes, 0},
    {SYS_fchown, "fchown", Role::attributes},
    {SYS_lchown, "lchown", Role::attributes, 0},
    {SYS_statfs, "statfs", Role::look, 0},
    {SYS_fstatfs, "fstatfs", Role::look},
    {SYS_setxattr, "setxattr", Role::attributes, 0},
    {SYS_lsetxattr, "lsetxattr", Role::attributes, 0},
    {SYS_fsetxattr, "fsetxattr", Role::attributes},
    {SYS_getxattr, "getxattr", Role::attributes, 0},
    {SYS_lgetxattr, "lgetxattr", Role::attributes, 0},
    {SYS_fgetxattr, "fgetxattr", Role::attributes},
    {SYS_listxattr, "listxattr", Role::attributes, 0},
    {SYS_llistxattr, "llistxattr", Role::attributes, 0},
    {SYS_flistxattr, "flistxattr", Role::attributes},
    {SYS_removexattr, "removexattr", Role::attributes, 0},
    {SYS_fremovexattr, "fremovexattr", Role::attributes},
    {SYS_getdents64, "getdents64", Role::read},
    {SYS_openat, "openat", Role::open, 1},
    {SYS_mkdirat, "mkdirat", Role::make_folder, 1},
    {SYS_fchownat, "fchownat", Role::attributes, 1},
    {SYS_newfstatat, "newfstatat", Role::look, 1},
    {SYS_unlinkat, "unlinkat", Role::unlink, 1},
    {SYS_renameat, "renameat", Role::rename, 3},
    {SYS_linkat, "linkat", Role::link, 3},
    {SYS_symlinkat, "symlinkat", Role::link, 2},
    {SYS_readlinkat, "readlinkat", Role::look, 1},
    {SYS_fchmodat, "fchmodat", Role::attributes, 1},
    {SYS_faccessat, "faccessat", Role::look, 1},
    {SYS_utimensat, "utimensat", Role::attributes, 1},
    {SYS_fallocate, "fallocate", Role::resize},
    {SYS_pipe2, "pipe2", Role::start},
    {SYS_preadv, "preadv", Role::read},
    {SYS_pwritev, "pwritev", Role::write},
    {SYS_syncfs, "syncfs", Role::flush},
    {SYS_renameat2, "renameat2", Role::rename, 3},
    {SYS_copy_file_range, "copy_file_range", Role::copy},
    {SYS_statx, "statx", Role::look, 1},
    {SYS_clone3, "clone3", Role::start},
    {SYS_openat2, "openat2", Role::open, 1},
    {SYS_faccessat2, "faccessat2", Role::look, 1},
});

/// What can happen at any file that is named, or lies on a disk or a server that goes away.
constexpr std::array kOfPlaces = {EIO, ESTALE, EACCES, ENOMEM, ELOOP};
constexpr std::array kOfRoom = {ENOSPC, EDQUOT, EROFS};

using Errors = std::vector<int>;

Errors Joined(Errors errors, std::initializer_list<int> more)
{
    errors.insert(errors.end(), more);
    return errors;
}

Errors OfPlaces(std::initializer_list<int> more)
{
    return Joined(Errors(kOfPlaces.begin(), kOfPlaces.end()), more);
}

Errors OfChanges(std::initializer_list<int> more)
{
    Errors errors = OfPlaces(more);
    errors.insert(errors.end(), kOfRoom.begin(), kOfRoom.end());
    return errors;
}

/// Where the flags of an open stand; a call without them always makes a file.
int FlagsOf(const Call& call)
{
    if (call.kind->number == SYS_creat || call.kind->number == SYS_openat2)
        return O_CREAT | O_WRONLY;
    return static_cast<int>(call.arguments[call.kind->path + 1]);
}

struct ErrorText {
    int error;
    std::string_view name;
};

#define KIV_ERROR(name)                                                                            \
    {                                                                                              \
        name, #name                                                                                \
    }
constexpr std::array kErrorTexts = std::to_array<ErrorText>({
    KIV_ERROR(EIO),    KIV_ERROR(ESTALE), KIV_ERROR(EACCES),     KIV_ERROR(EPERM),
    KIV_ERROR(ENOSPC), KIV_ERROR(EDQUOT), KIV_ERROR(ENOMEM),     KIV_ERROR(EROFS),
    KIV_ERROR(EINTR),  KIV_ERROR(EMFILE), KIV_ERROR(ENFILE),     KIV_ERROR(EXDEV),
    KIV_ERROR(ELOOP),  KIV_ERROR(EINVAL), KIV_ERROR(ENOSYS),     KIV_ERROR(EBUSY),
    KIV_ERROR(EMLINK), KIV_ERROR(EFBIG),  KIV_ERROR(EOPNOTSUPP), KIV_ERROR(ENOLCK),
    KIV_ERROR(EAGAIN), KIV_ERROR(ENOENT), KIV_ERROR(ENODEV),     KIV_ERROR(EPIPE),
    KIV_ERROR(E2BIG),  KIV_ERROR(ERANGE), KIV_ERROR(EOVERFLOW),
});
#undef KIV_ERROR

} // namespace

std::span<const CallKind> CallKinds()
{
    return kCallKinds;
}

const CallKind* KindOf(long number)
{
    const auto found = std::find_if(kCallKinds.begin(), kCallKinds.end(),
                                    [&](const CallKind& kind) { return kind.number == number; });
    return found == kCallKinds.end() ? nullptr : &*found;
}

bool Writes(const Call& call)
{
    switch (call.kind->role) {
    case Role::open:
        return (FlagsOf(call) & (O_CREAT | O_TRUNC | O_WRONLY | O_RDWR)) != 0;
    case Role::write:
    case Role::copy:
    case Role::rename:
    case Role::link:
    case Role::unlink:
    case Role::make_folder:
    case Role::resize:
        return true;
    default:
        return false;
    }
}

std::vector<int> ErrorsOf(const Call& call)
{
    switch (call.kind->role) {
    case Role::look:
        return call.kind->path < 0 ? Errors{EIO, ESTALE, ENOMEM, EOVERFLOW} : OfPlaces({});
    case Role::open:
        return Writes(call) ? OfChanges({EPERM, EMFILE, EINTR})
                            : OfPlaces({EPERM, EMFILE, ENFILE, EINTR});
    case Role::read:
        return {EIO, ESTALE, ENOMEM, EINTR};
    case Role::write:
        return {EIO, ENOSPC, EDQUOT, EFBIG, EINTR, ESTALE};
    case Role::copy:
        return {EIO, ENOSPC, EDQUOT, EXDEV, EINVAL, ENOSYS};
    case Role::flush:
        return {EIO, ENOSPC, EDQUOT, EROFS, EINVAL, EINTR};
    case Role::rename:
        return OfChanges({EPERM, EXDEV, EBUSY, EINVAL, ENOSYS});
    case Role::link:
        return OfChanges({EPERM, EXDEV, EMLINK, EOPNOTSUPP, ENOSYS});
    case Role::unlink:
        return OfChanges({EPERM, EBUSY});
    case Role::make_folder:
        return OfChanges({EPERM, EMLINK});
    case Role::resize:
        return {EIO, ENOSPC, EDQUOT, EFBIG, EPERM, EINTR, EOPNOTSUPP};
    case Role::attributes:
        if (call.kind->name.find("list") != std::string_view::npos)
            return {EIO, EPERM, ENOSPC}; // who does not know attributes has none to list
        return {EIO, EPERM, EROFS, EOPNOTSUPP, ENOSPC};
    case Role::lock:
        return {ENOLCK, EINTR, EIO, EOPNOTSUPP};
    case Role::where:
        return {EACCES, ENOENT, ENOMEM, EIO};
    case Role::start:
        return {EAGAIN, ENOMEM, EMFILE, EACCES};
    case Role::map:
        return {ENOMEM, ENODEV};
    case Role::close:
        return {};
    }
    return {};
}

std::vector<int> LateErrorsOf(const Call& call)
{
    switch (call.kind->role) {
    case Role::close: // the file is closed whatever it says
        return {EIO, ENOSPC, EDQUOT, EINTR};
    case Role::rename:
    case Role::link:
    case Role::unlink:
    case Role::make_folder:
        return {EIO, ESTALE};
    default:
        return {};
    }
}

bool MayFallShort(const Call& call)
{
    const bool list = call.kind->number == SYS_getdents64 || call.kind->number == SYS_getdents;
    const bool vector = call.kind->name.ends_with('v');
    return !list && !vector && (call.kind->role == Role::read || call.kind->role == Role::write) &&
           call.arguments[2] > 1;
}

std::string ErrorName(int error)
{
    const auto found = std::find_if(kErrorTexts.begin(), kErrorTexts.end(),
                                    [&](const ErrorText& text) { return text.error == error; });
    return found == kErrorTexts.end() ? std::to_string(error) : std::string(found->name);
}

int ErrorOfName(std::string_view name)
{
    const auto found = std::find_if(kErrorTexts.begin(), kErrorTexts.end(),
                                    [&](const ErrorText& text) { return text.name == name; });
    return found == kErrorTexts.end() ? 0 : found->error;
}

} // namespace kiv::faults
