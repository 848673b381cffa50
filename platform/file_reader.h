// Reading files, for those who do nothing else with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

/// Paths are Windows-1252 text and may be relative to the current directory. Reading throws
/// RunError of kind `file`, naming the path, when the operating system refuses.
class FileReader {
  public:
    FileReader() = default;
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;
    virtual ~FileReader() = default;

    /// A plain file is there. Never throws: a folder, the empty name and a name that ends in a
    /// separator are none.
    virtual bool FileExists(std::string_view path) = 0;
    /// The whole content.
    virtual std::string ReadFile(std::string_view path) = 0;
    /// Up to `count` bytes from `offset` (0-based) on; fewer at the end of the file.
    virtual std::string ReadPart(std::string_view path, std::uint64_t offset,
                                 std::size_t count) = 0;
};

} // namespace kiv
