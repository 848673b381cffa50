// Reading files, for those who do nothing else with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// What a file holds, for those who only look at it. It stays where it is as long as this does.
class FileContent {
  public:
    FileContent() = default;
    explicit FileContent(std::string text) : text_(std::move(text)), size_(text_.size()) {}

    std::string_view View() const { return {room_ ? begin_ : text_.data(), size_}; }
    std::size_t size() const { return size_; }

    /// Room to read into, which nobody has cleared, in the place of what it held.
    char* MakeRoom(std::size_t size)
    {
        text_.clear();
        size_ = 0;
        std::size_t there = size + kLine;
        room_.reset(new char[there]);
        void* begin = room_.get();
        begin_ = static_cast<char*>(std::align(kLine, size, begin, there));
        return begin_;
    }
    /// So much of the room holds something now.
    void SetSize(std::size_t size) { size_ = size; }

  private:
    // Large memory begins sixteen bytes behind the beginning of a page. Some processors take five
    // times as long to copy pages of a file to there.
    static constexpr std::size_t kLine = 64; // bytes of a processor's cache

    std::string text_;
    std::unique_ptr<char[]> room_;
    char* begin_ = nullptr; // of what is used of the room
    std::size_t size_ = 0;
};

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
    /// The same, which may take less time for a large file.
    virtual FileContent ReadContent(std::string_view path) { return FileContent(ReadFile(path)); }
    /// Up to `count` bytes from `offset` (0-based) on; fewer at the end of the file.
    virtual std::string ReadPart(std::string_view path, std::uint64_t offset,
                                 std::size_t count) = 0;
};

} // namespace kiv
