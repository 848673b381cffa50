// Open files of a POSIX system. Every function gives 0 or an error number.
#pragma once

#include "platform/file_reader.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace kiv {

/// An open file, closed with its owner.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept;
    ~Descriptor();

    int Get() const { return fd_; }
    bool IsOpen() const { return fd_ >= 0; }
    /// Takes another file in place of this one, which is closed.
    void Reset(int fd);
    /// Closes now, for those who must know whether that went well.
    int Close();

  private:
    int fd_;
};

/// Reads up to `count` bytes from `offset` on; fewer at the end of the file.
int ReadBytes(int fd, off_t offset, std::size_t count, std::string& bytes);
int ReadBytes(int fd, off_t offset, std::size_t count, FileContent& bytes);

/// Writes all of `bytes` at the file's position.
int WriteBytes(int fd, std::string_view bytes);

/// Whether an open file, of the size of `bytes`, holds just these.
bool HoldsBytes(int fd, std::string_view bytes);

/// Has the disk keep the file as it is now.
int FlushFile(int fd);

/// The same for the names in a folder.
int FlushFolder(const std::string& folder);

/// The same for all that was written to the disk on which a folder lies, by whatever program. For
/// many files that is faster by far than one after the other.
int FlushDisk(const std::string& folder);

} // namespace kiv
