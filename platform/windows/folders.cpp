#include "platform/windows/folders.h"

#include "platform/windows/api.h"
#include "platform/windows/handle.h"
#include "platform/windows/patience.h"

#include <string_view>

namespace kiv {

namespace {

std::uint64_t Whole(DWORD high, DWORD low)
{
    return (std::uint64_t{high} << 32) | low;
}

/// BY_HANDLE_FILE_INFORMATION and WIN32_FILE_ATTRIBUTE_DATA call these things alike.
template <typename Data>
void Take(const Data& data, WindowsState& state)
{
    state.size = Whole(data.nFileSizeHigh, data.nFileSizeLow);
    state.written = static_cast<std::int64_t>(
        Whole(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime));
    state.made = static_cast<std::int64_t>(
        Whole(data.ftCreationTime.dwHighDateTime, data.ftCreationTime.dwLowDateTime));
    state.attributes = data.dwFileAttributes;
    state.is_folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsLink(const WindowsState& state)
{
    return (state.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

/// Opens what a path leads to, folders too, for no more than a look.
WindowsHandle OpenToLook(const std::wstring& native)
{
    return WindowsHandle(::CreateFileW(native.c_str(), FILE_READ_ATTRIBUTES,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                       nullptr)); // what opens folders too
}

} // namespace

bool IsMissing(unsigned long error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_INVALID_DRIVE || error == ERROR_DIRECTORY;
}

bool IsAbsent(unsigned long error)
{
    return IsMissing(error) || error == ERROR_INVALID_NAME || error == ERROR_BAD_PATHNAME ||
           error == ERROR_FILENAME_EXCED_RANGE;
}

bool IsTaken(unsigned long error)
{
    return error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
}

unsigned long StateOfName(const std::wstring& native, WindowsState& state)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    // A file that was deleted while a program had it open refuses looks until that one lets go.
    const DWORD error = Patiently([&]() -> DWORD {
        return ::GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &data) != 0
                   ? 0
                   : ::GetLastError();
    });
    if (error == 0)
        Take(data, state);
    return error;
}

unsigned long StateOf(const std::wstring& native, WindowsState& state)
{
    const DWORD error = StateOfName(native, state);
    if (error != 0 || !IsLink(state))
        return error;
    const WindowsHandle target = OpenToLook(native);
    BY_HANDLE_FILE_INFORMATION data{};
    if (!target.IsOpen() || ::GetFileInformationByHandle(target.Get(), &data) == 0)
        return ::GetLastError();
    Take(data, state);
    return 0;
}

unsigned long LookForFolder(const std::wstring& native)
{
    WindowsState state;
    const DWORD error = StateOf(native, state);
    return error == 0 && !state.is_folder ? ERROR_DIRECTORY : error;
}

unsigned long FinalPathOf(const WindowsHandle& target, std::wstring& path)
{
    constexpr DWORD kMost = 32768;
    std::wstring place(kMost, L'\0');
    const DWORD size =
        ::GetFinalPathNameByHandleW(target.Get(), place.data(), kMost, FILE_NAME_NORMALIZED);
    if (size == 0 || size >= kMost)
        return size == 0 ? ::GetLastError() : ERROR_FILENAME_EXCED_RANGE;
    path = place.substr(0, size);
    return 0;
}

unsigned long FindFinalPath(std::wstring& native)
{
    const WindowsHandle target = OpenToLook(native);
    return target.IsOpen() ? FinalPathOf(target, native) : ::GetLastError();
}

unsigned long FollowLink(std::wstring& native)
{
    WindowsState state;
    DWORD error = StateOfName(native, state);
    if (error == 0 && IsLink(state))
        error = FindFinalPath(native);
    return IsMissing(error) ? 0 : error;
}

unsigned long ForEachName(const std::wstring& folder,
                          const std::function<bool(const WindowsName&)>& take)
{
    WIN32_FIND_DATAW entry{};
    const std::wstring all = folder + (folder.back() == L'\\' ? L"*" : L"\\*");
    const HANDLE search =
        ::FindFirstFileExW(all.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        return error == ERROR_FILE_NOT_FOUND ? 0 : error; // an empty root has not even "."
    }
    DWORD error = 0;
    while (error == 0) {
        const std::wstring_view name(&entry.cFileName[0]);
        const bool is_folder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (name != L"." && name != L".." && !take({std::wstring(name), is_folder}))
            break;
        if (::FindNextFileW(search, &entry) == 0)
            error = ::GetLastError();
    }
    ::FindClose(search);
    return error == ERROR_NO_MORE_FILES ? 0 : error;
}

} // namespace kiv
