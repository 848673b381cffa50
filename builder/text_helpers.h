// Small helpers of the builder: titles, keywords, paths, line-break markers, the
// character-to-entity table.
#pragma once

#include "builder/page_record.h"

#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// "January" to "December"; `month` is 1 to 12.
std::string_view MonthName(int month);

struct EntityRow {
    std::string_view find; // Windows-1252
    std::string_view replacement;
};

/// The 97 rows of the character-to-entity table, in the order in which they are applied.
std::span<const EntityRow> CharEntityTable();

/// Cuts the folders off `file` for good and returns what stands before the first ".".
std::string FileStem(std::string& file);

/// Every double quote as "&quot;".
std::string QuoteEscape(std::string_view text);

/// Tags removed, then "&" as "&amp;", then double quotes as "&quot;".
std::string StripTitle(std::string_view title);

/// The comma-joined keyword list of a title.
std::string TitleKeywords(std::string_view title);

/// Empty for a page whose name begins with "index", else "/" and the name.
std::string IndexRelativeLink(std::string_view page);

/// The path without its first three characters when it begins with "..".
std::string_view DropParentPrefix(std::string_view path);

/// "<>" as CR LF, then "~~" as "<>".
std::string DecodeLineBreaks(std::string_view text);

/// Puts the value of slot N of the "@@" family for each "@@N", N from 1 to 9, again and again while
/// one is left. Throws `overflow` when that would not end.
void ExpandTitleVariables(std::string& text, const VariableSlots& at_slots);

/// Every blank as "%20".
std::string SpaceToPct20(std::string_view text);

/// The last part of a directory path, without a separator after it; "" at a root.
std::string ThisDirNameOf(std::string_view directory);

} // namespace kiv
