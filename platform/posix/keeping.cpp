#include "platform/posix/keeping.h"

#include <cerrno>
#include <cstddef>
#include <unistd.h>

#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace kiv {

namespace {

constexpr mode_t kOthers = 07;
constexpr mode_t kBits = 07777;
constexpr mode_t kKeptBits = 01777; // less set-user and set-group

mode_t ClassOf(mode_t mode, unsigned place)
{
    return (mode >> (3 * place)) & kOthers;
}

mode_t Joined(mode_t sticky, mode_t user, mode_t group, mode_t others)
{
    return sticky | (user << 6U) | (group << 3U) | others;
}

bool IsInGroup(gid_t group)
{
    if (::getegid() == group)
        return true;
    const int count = ::getgroups(0, nullptr);
    std::vector<gid_t> groups(static_cast<std::size_t>(count < 0 ? 0 : count));
    const int got = ::getgroups(count, groups.data());
    for (int i = 0; i < got; ++i)
        if (groups[static_cast<std::size_t>(i)] == group)
            return true;
    return false;
}

/// The mode where the owner is lost: the user, who is the owner now, has the rights of the class
/// that he was in, and the former owner no more than he had.
mode_t WithoutOwner(const struct stat& old)
{
    const mode_t user = ClassOf(old.st_mode, 2);
    const mode_t group = ClassOf(old.st_mode, 1);
    const mode_t others = ClassOf(old.st_mode, 0);
    return Joined(old.st_mode & 01000U, IsInGroup(old.st_gid) ? group : others, group & user,
                  others & user);
}

/// The mode where the group is lost: who was in one of the two groups and is not in the other has
/// no more than both classes had.
mode_t WithoutGroup(mode_t mode)
{
    const mode_t common = ClassOf(mode, 1) & ClassOf(mode, 0);
    return Joined(mode & 01000U, ClassOf(mode, 2), common, common);
}

#ifdef __linux__

constexpr const char* kAccessList = "system.posix_acl_access";

bool SaysUnknown(int error)
{
    return error == EOPNOTSUPP || error == ENOSYS;
}

/// The names of the attributes of a file, each ended by NUL.
int NamesOfAttributes(const std::string& native, std::string& names)
{
    for (;;) {
        const ssize_t size = ::llistxattr(native.c_str(), nullptr, 0);
        if (size <= 0)
            return size == 0 || SaysUnknown(errno) ? 0 : errno;
        names.resize(static_cast<std::size_t>(size));
        const ssize_t got = ::llistxattr(native.c_str(), names.data(), names.size());
        names.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
        if (got >= 0 || errno != ERANGE) // it has got one more meanwhile
            return got >= 0 ? 0 : errno;
    }
}

int CopyAttribute(int draft, const std::string& native, const char* name)
{
    const ssize_t size = ::lgetxattr(native.c_str(), name, nullptr, 0);
    if (size < 0)
        return errno;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t got = ::lgetxattr(native.c_str(), name, value.data(), value.size());
    if (got < 0)
        return errno;
    return ::fsetxattr(draft, name, value.data(), static_cast<std::size_t>(got), 0) == 0 ? 0
                                                                                         : errno;
}

/// A new file may have got an access list from its folder, which would let in more people than the
/// old one.
int DropAccessList(int draft)
{
    const bool none =
        ::fremovexattr(draft, kAccessList) == 0 || errno == ENODATA || SaysUnknown(errno);
    return none ? 0 : errno;
}

/// What a file may do by itself belongs to its content, and is not handed on to another.
bool IsHandedOn(std::string_view name)
{
    return name != "security.capability" && name != "security.ima" && name != "security.evm";
}

struct Attributes {
    std::string names;
    bool has_access_list = false;
};

int ReadAttributes(const std::string& native, Attributes& attributes)
{
    if (const int error = NamesOfAttributes(native, attributes.names))
        return error;
    const std::string_view list(kAccessList);
    std::string_view rest = attributes.names;
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('\0'));
        attributes.has_access_list = attributes.has_access_list || name == list;
        rest.remove_prefix(name.size() + 1);
    }
    return 0;
}

void CopyAttributes(int draft, const std::string& native, const Attributes& attributes, Lost& lost)
{
    bool all = true;
    std::string_view rest = attributes.names;
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('\0'));
        // Labels are the system's own business, which it may have done already.
        if (name != kAccessList && IsHandedOn(name))
            all =
                (CopyAttribute(draft, native, name.data()) == 0 || name.starts_with("security.")) &&
                all;
        rest.remove_prefix(name.size() + 1);
    }
    if (!all)
        lost.emplace_back("its extended attributes");
}

#else

struct Attributes {
    bool has_access_list = false;
};
constexpr const char* kAccessList = "";
int ReadAttributes(const std::string&, Attributes&)
{
    return 0;
}
int DropAccessList(int)
{
    return 0;
}
int CopyAttribute(int, const std::string&, const char*)
{
    return 0;
}
void CopyAttributes(int, const std::string&, const Attributes&, Lost&) {}

#endif

/// An error that says that the user may not set a thing, or that the file system has no such thing.
bool MayNotBeSet(int error)
{
    return error == EPERM || error == EACCES || error == EINVAL || error == ENOSYS ||
           error == EOPNOTSUPP;
}

/// Owner and group, each for itself. Notes what is lost.
int KeepOwners(int draft, const struct stat& old, Lost& lost)
{
    struct stat state {};
    if (::fstat(draft, &state) != 0)
        return errno;
    // The group first: who has given the file away may not change it any more.
    if (state.st_gid != old.st_gid && ::fchown(draft, static_cast<uid_t>(-1), old.st_gid) != 0) {
        if (!MayNotBeSet(errno))
            return errno;
        lost.emplace_back("its group");
    }
    if (state.st_uid != old.st_uid && ::fchown(draft, old.st_uid, static_cast<gid_t>(-1)) != 0) {
        if (!MayNotBeSet(errno))
            return errno;
        lost.emplace_back("its owner");
    }
    return 0;
}

/// The mode. Where it cannot be set, what the draft has will do as long as it gives nobody more;
/// notes what is lost.
int KeepMode(int draft, mode_t mode, Lost& lost)
{
    if (::fchmod(draft, mode) == 0)
        return 0;
    const int error = errno;
    struct stat state {};
    if (!MayNotBeSet(error) || ::fstat(draft, &state) != 0 || (state.st_mode & kBits & ~mode) != 0)
        return error;
    if ((state.st_mode & kBits) != mode)
        lost.emplace_back("its mode");
    return 0;
}

bool Has(const Lost& lost, std::string_view what)
{
    for (const std::string_view entry : lost)
        if (entry == what)
            return true;
    return false;
}

} // namespace

int TakeOver(int draft, const std::string& native, const struct stat& old, Lost& lost)
{
    Attributes attributes;
    if (const int error = ReadAttributes(native, attributes))
        return error;
    if (const int error = KeepOwners(draft, old, lost))
        return error;
    if (const int error = DropAccessList(draft))
        return error;
    // An access list speaks of the owner and the group that the file has. Without it, the group's
    // bits of the mode would mean more than they did: the most that anybody in the list had.
    const bool keeps_list = attributes.has_access_list && lost.empty() &&
                            CopyAttribute(draft, native, kAccessList) == 0;
    if (attributes.has_access_list && !keeps_list)
        lost.emplace_back("its access list");
    mode_t mode = Has(lost, "its owner") ? WithoutOwner(old) : old.st_mode & kKeptBits;
    if (Has(lost, "its group") || Has(lost, "its access list"))
        mode = WithoutGroup(mode);
    CopyAttributes(draft, native, attributes, lost);
    return KeepMode(draft, mode, lost);
}

} // namespace kiv
