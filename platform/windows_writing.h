// Files read and written as a whole on Windows. Paths are native and absolute; every function gives
// 0 or an error number of the system.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// A handle of the system, closed with its owner.
class WindowsHandle {
  public:
    explicit WindowsHandle(void* handle);
    WindowsHandle(const WindowsHandle&) = delete;
    WindowsHandle& operator=(const WindowsHandle&) = delete;
    WindowsHandle(WindowsHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr))
    {
    }
    ~WindowsHandle();

    void* Get() const { return handle_; }
    bool IsOpen() const { return handle_ != nullptr; }
    void Close();

  private:
    void* handle_; // null: none
};

/// Opens a file that others may read, write, rename and delete meanwhile.
WindowsHandle OpenWindowsFile(const std::wstring& native);

/// Reads up to `count` bytes from `offset` on; fewer at the end of the file.
unsigned long ReadBytes(const WindowsHandle& file, std::uint64_t offset, std::size_t count,
                        std::string& bytes);

/// Writes all of `bytes` at the file's position.
unsigned long WriteBytes(const WindowsHandle& file, std::string_view bytes);

/// Whether a file of `size` bytes holds exactly these bytes.
bool HoldsBytes(const std::wstring& native, std::uint64_t size, std::string_view bytes);

/// Makes a new file, or replaces the one that is there: at every moment it has its old content or
/// `bytes`.
unsigned long Place(const std::wstring& native, std::string_view bytes, bool over_old);

/// Where a link leads; the path itself when it is none or leads nowhere.
std::wstring FollowLink(const std::wstring& native);

} // namespace kiv
