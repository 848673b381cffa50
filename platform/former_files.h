// What files were before a run changed them, so that it can be told in the end which are others
// now.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

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

/// The former files of a run, by what tells their places apart. A place that was only written with
/// the bytes that it had is none of them.
class FormerFiles {
  public:
    bool Knows(const std::string& place) const { return files_.contains(place); }
    /// The first one of a place stays.
    void Keep(const std::string& place, const FormerFile& former)
    {
        files_.try_emplace(place, former);
    }
    /// Whether a place that holds `content` now held something else, or nothing, before the run.
    bool IsChange(const std::string& place, std::string_view content) const
    {
        const auto found = files_.find(place);
        return found != files_.end() && !found->second.Held(content);
    }
    /// Whether nothing was at the place before the run.
    bool WasAbsent(const std::string& place) const
    {
        const auto found = files_.find(place);
        return found != files_.end() && found->second.WasAbsent();
    }
    void Forget() { files_.clear(); }

  private:
    std::unordered_map<std::string, FormerFile> files_;
};

} // namespace kiv
