// The few marks of the manual's prose, as HTML.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::manual {

/// Text as HTML: "&", "<", ">" and the double quote as references, and every character outside
/// ASCII as a numeric one.
std::string Escaped(std::string_view text);

/// Marks inside a line: `code`, **strong**, [words](link).
std::string InlineHtml(std::string_view text);

/// Whole lines: "# heading", "## heading below it", "![words](picture)", "- item", "1. step", "|
/// cell | cell" (the first row is the head), lines with four blanks in front as they stand, and
/// paragraphs between empty lines.
std::string ProseHtml(const std::vector<std::string>& lines);

/// The id of a heading: small letters and digits, "-" for anything between.
std::string HeadingId(std::string_view heading);

} // namespace kiv::manual
