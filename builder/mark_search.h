// Where in a text the characters stand that a construct of a line can begin with.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kiv {

/// How many characters are looked at in one go.
inline constexpr std::size_t kBlock = 16;
inline constexpr std::size_t kStretch = 64; // as many as a set of bits has room for

/// The characters of a block that a trigger of a line can begin with, a bit a character, the first
/// one's the lowest. Of `block` kBlock characters are read.
unsigned MarksInBlock(const char* block);

/// The same for a stretch of kStretch characters, and the ends of lines besides.
std::uint64_t MarksInStretch(const char* stretch);

} // namespace kiv
