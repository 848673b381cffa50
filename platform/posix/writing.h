// Files written as a whole on a POSIX file system. Every function gives 0 or an error number.
#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace kiv {

/// An open file, closed with its owner.
class Descriptor {
  public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int Get() const { return fd_; }
    bool IsOpen() const { return fd_ >= 0; }
    /// Closes now, for those who must know whether that went well.
    int Close();

  private:
    int fd_;
};

/// Reads up to `count` bytes from `offset` on; fewer at the end of the file.
int ReadBytes(int fd, off_t offset, std::size_t count, std::string& bytes);

/// Writes all of `bytes` at the file's position.
int WriteBytes(int fd, std::string_view bytes);

/// Whether an open file, of the size of `bytes`, holds just these.
bool HoldsBytes(int fd, std::string_view bytes);

/// Makes a new file that holds `bytes`; EEXIST when the name is taken. The name appears with the
/// whole content.
int WriteNew(const std::string& native, std::string_view bytes);

/// Puts a file with `bytes` in the place of an old one, whose owner and mode it takes over.
int WriteOver(const std::string& native, const struct stat& old, std::string_view bytes);

/// Renames; EEXIST when the new name is taken.
int RenameToFree(const std::string& from, const std::string& to);

/// Where the links lead that begin at `native`: the path of a file, or of one that could be made.
std::string FollowLinks(std::string native);

} // namespace kiv
