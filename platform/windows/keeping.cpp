#include "platform/windows/keeping.h"

#include "platform/windows/api.h"
#include "platform/windows/streams.h"

#include <cstring>
#include <sddl.h>

namespace kiv {

namespace {

/// One thing that a security descriptor holds.
struct Part {
    SECURITY_INFORMATION what;
    std::string_view name;
};

constexpr Part kOwner{OWNER_SECURITY_INFORMATION, "its owner"};
constexpr Part kGroup{GROUP_SECURITY_INFORMATION, "its group"};
constexpr Part kAccessList{DACL_SECURITY_INFORMATION, "its access list"};

DWORD ReadRights(const std::wstring& native, SECURITY_INFORMATION what, Rights& rights)
{
    DWORD size = 0;
    DWORD error = ERROR_INSUFFICIENT_BUFFER;
    while (error == ERROR_INSUFFICIENT_BUFFER) { // it may grow in between
        rights.resize(size / sizeof(std::uint64_t) + 1);
        const auto room = static_cast<DWORD>(rights.size() * sizeof(std::uint64_t));
        const BOOL done = ::GetFileSecurityW(native.c_str(), what, rights.data(), room, &size);
        error = done != 0 ? 0 : ::GetLastError();
    }
    if (error != 0)
        rights.clear();
    const bool unknown = error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_FUNCTION ||
                         error == ERROR_CALL_NOT_IMPLEMENTED;
    return unknown ? 0 : error;
}

std::string_view BytesOf(const void* data, DWORD size)
{
    return data == nullptr ? std::string_view()
                           : std::string_view(static_cast<const char*>(data), size);
}

/// The bytes of the one part that was read into `rights`.
std::string_view Content(Rights& rights, SECURITY_INFORMATION what)
{
    BOOL is_there = FALSE;
    BOOL is_default = FALSE;
    if (what == kAccessList.what) {
        ACL* list = nullptr;
        ::GetSecurityDescriptorDacl(rights.data(), &is_there, &list, &is_default);
        return list == nullptr ? std::string_view() : BytesOf(list, list->AclSize);
    }
    void* id = nullptr;
    if (what == kOwner.what)
        ::GetSecurityDescriptorOwner(rights.data(), &id, &is_default);
    else
        ::GetSecurityDescriptorGroup(rights.data(), &id, &is_default);
    return id == nullptr ? std::string_view() : BytesOf(id, ::GetLengthSid(id));
}

/// Whether an access list still takes over what its folder has it inherit; to be set again by who
/// sets the list.
void KeepInheriting(Rights& rights)
{
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (::GetSecurityDescriptorControl(rights.data(), &control, &revision) != 0 &&
        (control & SE_DACL_AUTO_INHERITED) != 0)
        ::SetSecurityDescriptorControl(rights.data(), SE_DACL_AUTO_INHERIT_REQ,
                                       SE_DACL_AUTO_INHERIT_REQ);
}

/// Returns whether the draft has this part of what the old file has.
bool Keep(const Part& part, const std::wstring& draft, const std::wstring& native)
{
    Rights wanted;
    Rights has;
    if (ReadRights(native, part.what, wanted) != 0)
        return false;
    if (wanted.empty())
        return true;
    if (part.what == kAccessList.what)
        KeepInheriting(wanted);
    // Who may not set it may have it all the same.
    return ::SetFileSecurityW(draft.c_str(), part.what, wanted.data()) != 0 ||
           (ReadRights(draft, part.what, has) == 0 && !has.empty() &&
            Content(has, part.what) == Content(wanted, part.what));
}

bool KeepAttributes(const std::wstring& draft, const WindowsState& old)
{
    constexpr DWORD kKept =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const DWORD changed = FILE_ATTRIBUTE_ARCHIVE; // for programs that save what has changed
    return ::SetFileAttributesW(draft.c_str(), (old.attributes & kKept) | changed) != 0;
}

} // namespace

unsigned long ReadFirstRights(const std::wstring& native, Rights& rights)
{
    const DWORD error = ReadRights(native, kAccessList.what, rights);
    if (error != ERROR_ACCESS_DENIED)
        return error;
    void* private_rights = nullptr;
    ULONG size = 0;
    const wchar_t* const owner_alone = L"D:P(A;;FA;;;OW)";
    if (::ConvertStringSecurityDescriptorToSecurityDescriptorW(owner_alone, SDDL_REVISION_1,
                                                               &private_rights, &size) == 0)
        return ::GetLastError();
    rights.resize(size / sizeof(std::uint64_t) + 1);
    std::memcpy(rights.data(), private_rights, size);
    ::LocalFree(private_rights);
    return 0;
}

void TakeOver(const std::wstring& draft, const std::wstring& native, const WindowsState& old,
              Lost& lost)
{
    if (!CopyStreams(native, draft))
        lost.emplace_back("its further contents");
    if (!KeepAttributes(draft, old))
        lost.emplace_back("its attributes");
    for (const Part& part : {kOwner, kGroup, kAccessList})
        if (!Keep(part, draft, native))
            lost.push_back(part.name);
}

} // namespace kiv
