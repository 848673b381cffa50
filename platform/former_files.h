// What files were before a run changed them, so that it can be told in the end which are others
// now.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace kiv {

/// What is as large is not read for the mere question whether it is another one.
constexpr std::size_t kLargestFormer = std::size_t{1} << 26U;

/// Tells a content from others, as long as the program runs.
struct ContentMark {
    explicit ContentMark(std::string_view content)
        : size(content.size()), hash(std::hash<std::string_view>()(content))
    {
    }
    bool operator==(const ContentMark&) const = default;

    std::size_t size;
    std::size_t hash;
};

/// What stood at a place before it was changed.
class FormerFile {
  public:
    static FormerFile Absent() { return FormerFile(Kind::absent); }
    /// A file that may not be read: whatever comes after it counts as a change.
    static FormerFile Unknown() { return FormerFile(Kind::unknown); }
    static FormerFile Holding(std::string_view content)
    {
        FormerFile former(Kind::known);
        former.mark_ = ContentMark(content);
        return former;
    }

    bool WasAbsent() const { return kind_ == Kind::absent; }

    bool Held(std::string_view content) const
    {
        return kind_ == Kind::known && mark_ == ContentMark(content);
    }

  private:
    enum class Kind { absent, unknown, known };
    explicit FormerFile(Kind kind) : kind_(kind) {}

    Kind kind_;
    std::optional<ContentMark> mark_;
};

} // namespace kiv
