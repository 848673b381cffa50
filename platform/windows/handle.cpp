#include "platform/windows/handle.h"

#include "platform/windows/api.h"
#include "platform/windows/patience.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kLargestCall = 256 * std::size_t{1024};

WindowsHandle OpenShared(const std::wstring& native, DWORD access)
{
    return WindowsHandle(::CreateFileW(native.c_str(), access,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
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

unsigned long WindowsHandle::Close()
{
    void* const handle = std::exchange(handle_, nullptr);
    return handle == nullptr || ::CloseHandle(handle) != 0 ? 0 : ::GetLastError();
}

WindowsHandle OpenWindowsFile(const std::wstring& native)
{
    return OpenShared(native, GENERIC_READ);
}

unsigned long SizeOf(const WindowsHandle& file, std::uint64_t& size)
{
    LARGE_INTEGER bytes;
    if (::GetFileSizeEx(file.Get(), &bytes) == 0)
        return ::GetLastError();
    size = static_cast<std::uint64_t>(bytes.QuadPart);
    return 0;
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
        const auto step = static_cast<DWORD>(std::min(count - done, kLargestCall));
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

bool HoldsBytes(const WindowsHandle& file, std::string_view bytes)
{
    std::uint64_t size = 0;
    if (SizeOf(file, size) != 0 || size != bytes.size())
        return false;
    std::string held;
    for (std::uint64_t offset = 0; !bytes.empty(); offset += held.size()) {
        const std::size_t step = std::min(bytes.size(), kLargestCall);
        if (ReadBytes(file, offset, step, held) != 0 || held != bytes.substr(0, step))
            return false;
        bytes.remove_prefix(step);
    }
    return true;
}

unsigned long FlushFile(const WindowsHandle& file)
{
    if (::FlushFileBuffers(file.Get()) != 0)
        return 0;
    // What cannot be flushed, for it lies in memory alone, is as safe as it can be.
    const DWORD error = ::GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ? 0 : error;
}

unsigned long FlushFileAt(const std::wstring& native)
{
    return Patiently([&]() -> DWORD {
        const WindowsHandle file = OpenShared(native, GENERIC_WRITE);
        if (file.IsOpen())
            return FlushFile(file);
        const DWORD error = ::GetLastError();
        return error == ERROR_ACCESS_DENIED ? 0 : error;
    });
}

} // namespace kiv
