#include "platform/windows/writing.h"

#include "platform/windows/api.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kStep = 256 * std::size_t{1024};

std::wstring TemporaryName(const std::wstring& native)
{
    static std::atomic<unsigned> number{0};
    return native.substr(0, native.rfind(L'\\') + 1) + L".kiv-" +
           std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++number) + L".tmp";
}

/// Whether the name on the disk is spelled as in `native`.
bool HasSpelling(const std::wstring& native)
{
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(native.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    ::FindClose(search);
    return native.substr(native.rfind(L'\\') + 1) == &found.cFileName[0];
}

/// Another program has the file for a moment or for longer.
bool IsInUse(DWORD error)
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_ACCESS_DENIED;
}

/// Gives the whole draft its place, in one step.
DWORD MoveIntoPlace(const std::wstring& draft, const std::wstring& native, DWORD flags)
{
    // Virus scanners and indexers look into every new file, and hold it for a moment.
    constexpr int kTries = 10;
    constexpr DWORD kPause = 20; // milliseconds
    DWORD error = 0;
    for (int i = 0; i < kTries; ++i) {
        if (::MoveFileExW(draft.c_str(), native.c_str(), flags) != 0)
            return 0;
        error = ::GetLastError();
        if (!IsInUse(error))
            break;
        ::Sleep(kPause);
    }
    return error;
}

/// Gives the draft the attributes and rights of the file that it replaces, as far as is allowed.
void TakeOver(const std::wstring& native, const WindowsState& old, const std::wstring& draft)
{
    constexpr DWORD kKept = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    ::SetFileAttributesW(draft.c_str(), old.attributes & kKept);
    DWORD size = 0;
    ::GetFileSecurityW(native.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::uint64_t> rights(size / sizeof(std::uint64_t) + 1);
    if (size > 0 && ::GetFileSecurityW(native.c_str(), DACL_SECURITY_INFORMATION, rights.data(),
                                       size, &size) != 0)
        ::SetFileSecurityW(draft.c_str(), DACL_SECURITY_INFORMATION, rights.data());
}

/// Writes a file of a name of its own beside `native`.
DWORD WriteDraft(const std::wstring& native, std::string_view bytes, std::wstring& draft)
{
    HANDLE handle = INVALID_HANDLE_VALUE;
    DWORD error = ERROR_FILE_EXISTS;
    while (handle == INVALID_HANDLE_VALUE && error == ERROR_FILE_EXISTS) {
        draft = TemporaryName(native);
        handle = ::CreateFileW(draft.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
        error = handle == INVALID_HANDLE_VALUE ? ::GetLastError() : 0;
    }
    WindowsHandle file(handle);
    if (!file.IsOpen())
        return error;
    error = WriteBytes(file, bytes);
    file.Close();
    if (error != 0)
        ::DeleteFileW(draft.c_str());
    return error;
}

/// The error that keeps a file from being replaced; 0 when nothing does.
DWORD WhyNotReplaced(const std::wstring& native, const WindowsState& old)
{
    if ((old.attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return ERROR_FILE_READ_ONLY;
    // The move would only say "access denied" of a file that another program holds.
    const WindowsHandle file(::CreateFileW(native.c_str(), GENERIC_WRITE | DELETE,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                           nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.IsOpen() ? 0 : ::GetLastError();
}

} // namespace

WindowsHandle::WindowsHandle(void* handle)
    : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle)
{
}

WindowsHandle::~WindowsHandle()
{
    Close();
}

void WindowsHandle::Close()
{
    if (handle_ != nullptr)
        ::CloseHandle(handle_);
    handle_ = nullptr;
}

WindowsHandle OpenWindowsFile(const std::wstring& native)
{
    return WindowsHandle(::CreateFileW(native.c_str(), GENERIC_READ,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

unsigned long ReadBytes(const WindowsHandle& file, std::uint64_t offset, std::size_t count,
                        std::string& bytes)
{
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(offset);
    if (::SetFilePointerEx(file.Get(), place, nullptr, FILE_BEGIN) == 0)
        return ::GetLastError();
    bytes.resize(count);
    std::size_t done = 0;
    while (done < count) {
        const auto step = static_cast<DWORD>(std::min(count - done, kStep));
        DWORD got = 0;
        if (::ReadFile(file.Get(), &bytes[done], step, &got, nullptr) == 0)
            return ::GetLastError();
        if (got == 0)
            break;
        done += got;
    }
    bytes.resize(done);
    return 0;
}

unsigned long WriteBytes(const WindowsHandle& file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto step = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1UL << 24));
        DWORD put = 0;
        if (::WriteFile(file.Get(), bytes.data(), step, &put, nullptr) == 0)
            return ::GetLastError();
        if (put == 0)
            return ERROR_DISK_FULL;
        bytes.remove_prefix(put);
    }
    return 0;
}

bool HoldsBytes(const std::wstring& native, std::uint64_t size, std::string_view bytes)
{
    if (size != bytes.size())
        return false;
    const WindowsHandle file = OpenWindowsFile(native);
    if (!file.IsOpen())
        return false;
    std::string held;
    for (std::uint64_t offset = 0; !bytes.empty(); offset += held.size()) {
        const std::size_t step = std::min(bytes.size(), kStep);
        if (ReadBytes(file, offset, step, held) != 0 || held != bytes.substr(0, step))
            return false;
        bytes.remove_prefix(step);
    }
    return true;
}

bool StateOf(const std::wstring& native, WindowsState& state)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (::GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &data) == 0)
        return false;
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        const WindowsHandle target(::CreateFileW(
            native.c_str(), FILE_READ_ATTRIBUTES,
            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
            FILE_FLAG_BACKUP_SEMANTICS, nullptr)); // what opens folders too
        BY_HANDLE_FILE_INFORMATION there{};
        if (!target.IsOpen() || ::GetFileInformationByHandle(target.Get(), &there) == 0)
            return false;
        data.dwFileAttributes = there.dwFileAttributes;
        data.ftLastWriteTime = there.ftLastWriteTime;
        data.nFileSizeHigh = there.nFileSizeHigh;
        data.nFileSizeLow = there.nFileSizeLow;
    }
    state.size = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
    state.written = (std::int64_t{data.ftLastWriteTime.dwHighDateTime} << 32) |
                    data.ftLastWriteTime.dwLowDateTime;
    state.attributes = data.dwFileAttributes;
    state.is_folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return true;
}

unsigned long WriteNew(const std::wstring& native, std::string_view bytes)
{
    std::wstring draft;
    DWORD error = WriteDraft(native, bytes, draft);
    if (error != 0)
        return error;
    error = MoveIntoPlace(draft, native, 0);
    if (error != 0)
        ::DeleteFileW(draft.c_str());
    return error;
}

unsigned long Replace(const std::wstring& native, const WindowsState& old, std::string_view bytes)
{
    DWORD error = WhyNotReplaced(native, old);
    std::wstring draft;
    if (error == 0)
        error = WriteDraft(native, bytes, draft);
    if (error != 0)
        return error;
    TakeOver(native, old, draft);
    error = MoveIntoPlace(draft, native, MOVEFILE_REPLACE_EXISTING);
    if (error == 0)
        return 0;
    ::DeleteFileW(draft.c_str());
    return error;
}

unsigned long MoveToFree(const std::wstring& from, const std::wstring& to)
{
    if (::MoveFileExW(from.c_str(), to.c_str(), 0) == 0)
        return ::GetLastError();
    if (::CompareStringOrdinal(from.c_str(), -1, to.c_str(), -1, TRUE) != CSTR_EQUAL ||
        HasSpelling(to))
        return 0;
    // Some file systems take the other case for the name that is there already.
    const std::wstring between = TemporaryName(to);
    if (::MoveFileExW(from.c_str(), between.c_str(), 0) == 0)
        return ::GetLastError();
    if (::MoveFileExW(between.c_str(), to.c_str(), 0) != 0)
        return 0;
    const DWORD error = ::GetLastError();
    ::MoveFileExW(between.c_str(), from.c_str(), 0);
    return error;
}

std::wstring FollowLink(const std::wstring& native)
{
    const DWORD attributes = ::GetFileAttributesW(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return native;
    const WindowsHandle file = OpenWindowsFile(native);
    std::array<wchar_t, 32768> target{};
    const DWORD size =
        file.IsOpen()
            ? ::GetFinalPathNameByHandleW(file.Get(), target.data(),
                                          static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED)
            : 0;
    return size > 0 && size < target.size() ? std::wstring(target.data(), size) : native;
}

} // namespace kiv
