// Open files of Windows. Paths are native and absolute; every function gives 0 or an error number
// of Windows unless it says otherwise.
#pragma once

#include <cstddef>
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
    /// Closes now, for those who must know whether that went well.
    unsigned long Close();

  private:
    void* handle_; // null: none
};

/// Opens a file that others may read, write, rename and delete meanwhile.
WindowsHandle OpenWindowsFile(const std::wstring& native);

unsigned long SizeOf(const WindowsHandle& file, std::uint64_t& size);

/// Reads up to `count` bytes from `offset` on; fewer at the end of the file.
unsigned long ReadBytes(const WindowsHandle& file, std::uint64_t offset, std::size_t count,
                        std::string& bytes);

/// Writes all of `bytes` at the file's position.
unsigned long WriteBytes(const WindowsHandle& file, std::string_view bytes);

/// Whether an open file holds exactly these bytes.
bool HoldsBytes(const WindowsHandle& file, std::string_view bytes);

/// Has the disk keep a file, open for writing, as it is now.
unsigned long FlushFile(const WindowsHandle& file);
/// The same for one that is not open. Who may not write into it cannot flush it either: it is none
/// that this program has written then, and stays as it is.
unsigned long FlushFileAt(const std::wstring& native);

} // namespace kiv
