#include "platform/windows_writing.h"

#include "platform/windows_system.h"

#include <algorithm>
#include <array>
#include <atomic>

namespace kiv {

namespace {

constexpr std::size_t kStep = 256 * std::size_t{1024};

std::wstring TemporaryName(const std::wstring& native)
{
    static std::atomic<unsigned> number{0};
    return native.substr(0, native.rfind(L'\\') + 1) + L".kiv-" +
           std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++number) + L".tmp";
}

/// Gives the whole draft its place.
DWORD MoveIntoPlace(const std::wstring& draft, const std::wstring& native, bool over_old)
{
    if (!over_old)
        return ::MoveFileExW(draft.c_str(), native.c_str(), 0) != 0 ? 0 : ::GetLastError();
    // Keeps the old file's attributes and rights; not every file system knows it.
    if (::ReplaceFileW(native.c_str(), draft.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                       nullptr, nullptr) != 0)
        return 0;
    const DWORD error = ::GetLastError();
    // After the last two the old file may be gone already, so the draft must get its place.
    const bool may_go_on = error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ||
                           error == ERROR_INVALID_PARAMETER ||
                           error == ERROR_UNABLE_TO_MOVE_REPLACEMENT ||
                           error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2;
    if (!may_go_on)
        return error;
    return ::MoveFileExW(draft.c_str(), native.c_str(), MOVEFILE_REPLACE_EXISTING) != 0
               ? 0
               : ::GetLastError();
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

unsigned long Place(const std::wstring& native, std::string_view bytes, bool over_old)
{
    std::wstring temporary;
    HANDLE handle = INVALID_HANDLE_VALUE;
    DWORD error = ERROR_FILE_EXISTS;
    while (handle == INVALID_HANDLE_VALUE && error == ERROR_FILE_EXISTS) {
        temporary = TemporaryName(native);
        handle = ::CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
        error = handle == INVALID_HANDLE_VALUE ? ::GetLastError() : 0;
    }
    WindowsHandle draft(handle);
    if (!draft.IsOpen())
        return error;
    error = WriteBytes(draft, bytes);
    draft.Close();
    if (error == 0)
        error = MoveIntoPlace(temporary, native, over_old);
    if (error != 0)
        ::DeleteFileW(temporary.c_str());
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
