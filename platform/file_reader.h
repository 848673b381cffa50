// Reading files, for those who do nothing else with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

/// Paths are Windows-1252 text and may be relative to the current directory. All of these throw
/// RunError of kind `file`, naming the path, when the operating system refuses or the path is
/// longer than it can be. Only where it says that there is no such name is a file taken for absent.
class FileReader {
  public:
    FileReader() = default;
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;
    virtual ~FileReader() = default;

    /// A plain file is there. A folder, the empty name and a name that ends in a separator are
    /// none. Throws when the disk cannot tell.
    virtual bool FileExists(std::string_view path) = 0;
    /// The whole content. A file of more than 1 GiB is refused; RunError of kind `memory` when
    /// there is no room for it.
    virtual std::string ReadFile(std::string_view path) = 0;
    /// Up to `count` bytes from `offset` (0-based) on; fewer at the end of the file.
    virtual std::string ReadPart(std::string_view path, std::uint64_t offset,
                                 std::size_t count) = 0;
};

} // namespace kiv
