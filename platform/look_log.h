// What is looked at on the drives, told while it happens; and the state of a place, which a later
// look can be compared with.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

struct OutputFile;

/// How a place is, by one look. Links are followed. Times are those of the file system, for
/// comparing alone.
struct PlaceState {
    enum class Kind { absent, file, folder, other, refused };
    Kind kind = Kind::absent;
    std::uint64_t size = 0;     // of a file
    std::int64_t written = 0;   // when the content changed last
    std::int64_t changed = 0;   // when anything changed last; on Windows when the file was made
    std::uint64_t identity = 0; // tells the file from others that had its name; 0: unknown
    int error = 0;              // of the operating system, when it refuses the look
    bool operator==(const PlaceState&) const = default;
    /// The same but for the identity, which some file systems make up anew at each look.
    bool HasStampsOf(const PlaceState& other) const
    {
        return kind == other.kind && size == other.size && written == other.written &&
               changed == other.changed;
    }
};

/// Is told of places by absolute drive path, spelled as they were looked for.
class LookLog {
  public:
    LookLog() = default;
    LookLog(const LookLog&) = delete;
    LookLog& operator=(const LookLog&) = delete;
    virtual ~LookLog() = default;

    /// Right before a look whether something is there.
    virtual void Looks(const std::string& absolute) = 0;
    /// Right before a file is opened to be read.
    virtual void Opens(const std::string& absolute) = 0;
    /// A file was read whole.
    virtual void HasRead(const std::string& absolute, std::string_view bytes) = 0;
    /// The program itself has written, made or deleted what is there. `bytes` is the whole content,
    /// null when that is not known.
    virtual void HasWritten(const OutputFile& file, const std::string_view* bytes) = 0;
};

} // namespace kiv
