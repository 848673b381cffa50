// How the bytes of a source are written down: what an editor does to a file as a whole.
#pragma once

#include <string_view>

namespace kiv {

/// The byte order mark of UTF-8 stands at the head.
bool HasByteOrderMark(std::string_view bytes);

/// Two bytes a character: by its byte order mark, or because every second byte of the head is zero.
bool IsUtf16(std::string_view bytes);

/// There are CRs, but no LF at all: the file is one line.
bool HasOnlyLoneCr(std::string_view bytes);

} // namespace kiv
