#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// A JPEG without the segments that say nothing of its pixels (what camera and programs have noted,
/// comments); any other bytes come back as they are.
std::string PlainJpeg(std::string_view jpeg);

/// Whether no table of codes in a plain JPEG says that it has more than the 256 codes that there
/// can be: the decoder writes past the end of its memory for one that does.
bool HasSoundTables(std::string_view plain_jpeg);

} // namespace kiv
