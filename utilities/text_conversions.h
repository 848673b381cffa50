// The text conversions: text in, text out. Lines end at CR LF, LF or a lone CR where a function
// says "lines of any kind".
#pragma once

#include "utilities/conversions.h"

#include <string>
#include <string_view>

namespace kiv {

/// An e-mail to HTML paragraphs: the default conversion. Lines of any kind.
std::string EmailToHtml(std::string_view text, const ConversionBoxes& boxes);

/// `x=rs("x")` for every piece between tabs.
std::string TabsToRs(std::string_view text);

/// A script-writing call for every line that is not empty; only CR LF parts lines.
std::string LinesToJs(std::string_view text);

/// The names of a form's fields as a mail script. Throws RunError of kind `invalid_argument` for a
/// "NAME=" without a double quote behind it.
std::string FieldNamesToScript(std::string_view text, std::string_view recipient);

/// Characters to entities, smart quotes to plain ones, bullets to list items. Lines of any kind.
std::string CleanQuotes(std::string_view text, bool keep_smart_quotes);

/// Whether newsgrabber takes a text: its first line begins with "!!".
bool IsNewsLine(std::string_view text);

/// The page-list entry of the news bang line that a text begins with. Throws RunError of kind
/// `subscript` when the line has fewer than three fields.
std::string NewsLineToEntry(std::string_view text);

/// Every LF as a blank: the text that TabsToPipes takes apart, so that only a CR ends a row.
std::string WithoutLineFeeds(std::string_view text);

/// Rows of the bracket-table syntax, each behind `prefix`, from tab-separated lines of any kind.
std::string TabsToPipes(std::string_view text, std::string_view prefix);

/// "<p>...</p>": every line that ends in "<p>" ends in "</p>" instead. Lines end in CR LF or LF and
/// keep their ends.
std::string ptop(std::string_view text);

} // namespace kiv
