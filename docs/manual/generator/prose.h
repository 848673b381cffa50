// The few marks of the manual's prose, as HTML.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::manual {

/// Text as HTML: "&", "<", ">" and the double quote as references, and every character outside
/// ASCII as a numeric one.
std::string Escaped(std::string_view text);

enum class SpanKind { plain, code, strong, link };

/// A stretch of a line, between its marks. What is strong or a link may hold marks again.
struct Span {
    SpanKind kind;
    std::string_view text;
    std::string_view target; // of a link
};

/// A line cut at its marks: `code`, **strong**, [words](link).
std::vector<Span> Spans(std::string_view line);

/// The line with these marks as HTML, and without them.
std::string InlineHtml(std::string_view line);
std::string InlineText(std::string_view line);

/// The cells of a table's row, a line that begins "| ": parted by " | ", but not inside code.
std::vector<std::string> Cells(std::string_view row);

/// Whole lines: "# heading", "## heading below it", "![words](picture)", "- item", "1. step", "|
/// cell | cell" (the first row is the head), lines with four blanks in front as they stand, and
/// paragraphs between empty lines.
std::string ProseHtml(const std::vector<std::string>& lines);

/// The id of a heading: small letters and digits, "-" for anything between.
std::string HeadingId(std::string_view heading);

} // namespace kiv::manual
