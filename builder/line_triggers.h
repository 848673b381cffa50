// Most lines hold nothing to expand. One pass over a line tells which steps of the merge can act on
// it at all.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv {

/// What a line holds that a step of the merge may act on, as a set of bits.
enum Trigger : std::uint32_t {
    kPrefix = 1U << 0,     // begins with "DIR1:", "ASP:" or "HTM:"
    kMarker = 1U << 1,     // begins with "<!--"
    kWrapEnd = 1U << 2,    // is "]]"
    kWrapper = 1U << 3,    // begins with "[["
    kBang = 1U << 4,       // holds "!!"
    kDollar = 1U << 5,     // holds "$$"
    kReference = 1U << 6,  // holds "?!" or "??"
    kAt = 1U << 7,         // holds "@"
    kDirective = 1U << 16, // begins with "@"
    kAtNumber = 1U << 15,  // holds "@@"
    kPercent = 1U << 8,    // holds "%%"
    kStyle = 1U << 9,      // holds "<style>"
    kOption = 1U << 10,    // holds "<option value="
    kEscape = 1U << 11,    // holds "{}", "{{" or "}}"
    kMeta = 1U << 12,      // holds "<META NAME=" (template lines)
    kPosition = 1U << 13,  // first and third character are "=" (template lines)
    kFileText = 1U << 14,  // begins with "!++" (body lines)
    kBlockTag = 1U << 17,  // holds "<zu" (the page list alone)
    kEndBehind = 1U << 18, // CR LF stands right behind it in its source
    kListSign = 1U << 19,  // begins with ";" or "+" (the page list and what it includes)
    kDefining = 1U << 20,  // its fifth character is "=", as that of "@@03= text" (the page list)
    kTemplateOnly = kMeta | kPosition,
    kBodyOnly = kFileText,
    kMerged = kBlockTag - 1, // all but what is done with when lines have been read
};

using Triggers = std::uint32_t;

/// The triggers of a line.
Triggers ScanLine(std::string_view line);

/// Goes through a text line by line. One look at each of its characters finds both the end of a
/// line and what it holds. LF ends a line and a CR right before it goes with it; a last line needs
/// no end.
class LineScanner {
  public:
    LineScanner() = default;
    explicit LineScanner(std::string_view text) : text_(text) {}

    /// What no line was taken from yet.
    std::string_view Rest() const { return text_.substr(next_); }
    bool AtEnd() const { return next_ == text_.size(); }
    /// Takes the next line, which there must be; `triggers` become its own, and those alone can
    /// have kEndBehind.
    std::string_view Next(Triggers& triggers);

  private:
    std::string_view Ended(std::size_t end, Triggers found, Triggers& triggers);

    bool TakeStretch(std::uint64_t& marks);

    static constexpr std::size_t kAtOnce = 32; // stretches

    std::string_view text_;
    std::size_t next_ = 0;    // where the next line begins
    std::size_t seen_ = 0;    // how far the stretches reach that were taken
    std::uint64_t marks_ = 0; // of the last one: what was not taken of it yet, a bit a byte
    std::array<std::uint64_t, kAtOnce> ahead_{}; // of the stretches behind it
    std::size_t first_ahead_ = 0;
    std::size_t ahead_count_ = 0;
};

} // namespace kiv
