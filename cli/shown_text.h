// Text as it may be shown on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Windows-1252 text as UTF-8 in which nothing steers a terminal: all that is no character to be
/// seen, but for tabs and line ends, becomes `\xHH`, its number in the code page. CR LF becomes LF.
std::string ShownText(std::string_view text);

/// The same for a name or a sentence, on one line: a line end in it becomes `\xHH`, too.
std::string ShownLine(std::string_view text);

/// The same as ShownText for text that is UTF-8 already. A byte that is part of no character
/// becomes `\xHH`, too.
std::string ShownUtf8(std::string_view utf8);

/// The same on one line.
std::string ShownUtf8Line(std::string_view utf8);

/// A native path as a text: only a byte that is part of no character becomes `\xHH`.
std::string OnlyUtf8(std::string_view native);

} // namespace kiv
