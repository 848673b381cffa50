#include "platform/windows/folder_locks.h"

#include "platform/windows/api.h"
#include "platform/windows/folders.h"
#include "platform/windows/handle.h"
#include "platform/windows/paths.h"

#include <cstdint>
#include <sddl.h>
#include <utility>

namespace kiv {

namespace {

constexpr DWORD kLongestWait = 10'000; // milliseconds

/// Windows lets go of the mutex with the thread that got it, at the latest.
class WindowsFolderLock : public FolderLock {
  public:
    explicit WindowsFolderLock(WindowsHandle mutex) : mutex_(std::move(mutex)) {}
    WindowsFolderLock(const WindowsFolderLock&) = delete;
    WindowsFolderLock& operator=(const WindowsFolderLock&) = delete;
    ~WindowsFolderLock() override { ::ReleaseMutex(mutex_.Get()); }

  private:
    WindowsHandle mutex_;
};

/// What a mutex may be called, which is neither long nor with "\", for each folder another.
std::wstring LockName(std::wstring folder)
{
    FindFinalPath(folder);                      // else its path as it is
    std::uint64_t hash = 14695981039346656037U; // FNV-1a
    for (const wchar_t unit : UpperCaseOf(folder))
        hash = (hash ^ static_cast<std::uint16_t>(unit)) * 1099511628211U;
    return L"kiv-folder-" + std::to_wstring(hash);
}

/// A mutex that every user of the machine may wait for. None when somebody else bears the name.
WindowsHandle NamedMutex(const std::wstring& name)
{
    SECURITY_ATTRIBUTES rights{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
    const wchar_t* const everybody = L"D:(A;;0x00100001;;;WD)"; // wait and give back
    ::ConvertStringSecurityDescriptorToSecurityDescriptorW(everybody, SDDL_REVISION_1,
                                                           &rights.lpSecurityDescriptor, nullptr);
    WindowsHandle mutex(
        ::CreateMutexExW(&rights, name.c_str(), 0, SYNCHRONIZE | MUTEX_MODIFY_STATE));
    ::LocalFree(rights.lpSecurityDescriptor);
    return mutex;
}

/// One for all sessions of the machine, or else for the user's own.
WindowsHandle MutexOf(const std::wstring& folder)
{
    const std::wstring name = LockName(folder);
    WindowsHandle mutex = NamedMutex(L"Global\\" + name);
    return mutex.IsOpen() ? std::move(mutex) : NamedMutex(L"Local\\" + name);
}

} // namespace

std::unique_ptr<FolderLock> LockWindowsFolder(const std::wstring& folder)
{
    WindowsHandle mutex = MutexOf(folder);
    // That its last owner has ended without giving it back is no reason not to take it.
    if (mutex.IsOpen() && ::WaitForSingleObject(mutex.Get(), kLongestWait) == WAIT_TIMEOUT)
        return nullptr;
    return std::make_unique<WindowsFolderLock>(std::move(mutex));
}

} // namespace kiv
