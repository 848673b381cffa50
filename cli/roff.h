// Pieces of manual pages in roff.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Text with what roff would read as its own made plain.
std::string Roff(std::string_view text);

/// The same in lines short enough to be read in the source, each with a line end.
std::string RoffLines(std::string_view text);

/// Paragraphs, which an empty line parts, as lines.
std::string RoffParagraphs(std::string_view text);

/// The head of a page in section 1 up to its synopsis; `program` is "kiv-cli".
std::string RoffHead(std::string_view program, std::string_view summary);

/// A section of a page with its text; `heading` comes out in capitals.
std::string RoffSection(std::string_view heading, std::string_view text);

} // namespace kiv
