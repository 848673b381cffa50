// Where in a text the characters stand that a construct of a line can begin with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace kiv {

/// How many characters are looked at in one go: as many as a set of bits has room for.
inline constexpr std::size_t kStretch = 64;

/// The characters that a trigger of a line can begin with, and LF, among the kStretch characters of
/// `text` from `from` on, or as many as there are: a bit a character, the first one's the lowest.
/// Most tags are none that count, so "<" is one of them where a letter follows that a tag that
/// counts begins with, in either case, or where it is the last of the stretch or of the text.
std::uint64_t MarksFrom(std::string_view text, std::size_t from);

/// The same for one stretch after the other, as many as there is room for or as the text has.
/// Returns how many that are.
std::size_t MarksFrom(std::string_view text, std::size_t from, std::span<std::uint64_t> marks);

/// The same for a whole stretch that begins at `stretch`, by comparing: for processors that cannot
/// look up 32 bytes at a time.
std::uint64_t MarksByComparing(const char* stretch);

/// Whether a text holds a character that what the at-variables, or steps behind them, act on begins
/// with. A "<" within it may count for none where it begins no tag that counts.
bool HoldsLateMark(std::string_view text);

} // namespace kiv
