// Files read and written as a whole on Windows. Paths are native and absolute; every function gives
// 0 or an error number of Windows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// A handle of Windows, closed with its owner.
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

/// What is known of a file or folder without reading it; of a link: of what it leads to.
struct WindowsState {
    std::uint64_t size = 0;
    std::int64_t written = 0; // 100 ns ticks
    unsigned long attributes = 0;
    bool is_folder = false;
};

/// False when there is none.
bool StateOf(const std::wstring& native, WindowsState& state);

/// Makes a file that is not there yet, whole or not at all.
unsigned long WriteNew(const std::wstring& native, std::string_view bytes);

/// Replaces a file: at every moment it has its old content or `bytes`. Its attributes and rights
/// stay. A file that is read-only, or that another program has open, keeps its old content.
unsigned long Replace(const std::wstring& native, const WindowsState& old, std::string_view bytes);

/// Gives a file a name that is free; it may be its own name in other case.
unsigned long MoveToFree(const std::wstring& from, const std::wstring& to);

/// Where a link leads; the path itself when it is none or leads nowhere.
std::wstring FollowLink(const std::wstring& native);

} // namespace kiv
