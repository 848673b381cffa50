// Cuts the source lines into pages: directives go into the page records, the other lines are kept
// for the merge.
#pragma once

#include <string_view>

namespace kiv {

struct Build;

/// Begins a page, in any case; its file's name stands from the second character behind it on.
inline constexpr std::string_view kPageStart = "@FILE =";

/// Fills PageTable, PageCount, PageLines, NumberedVariables, SiteRoot and the output roots. A
/// folder that is not there is reported and ends the parse, which leaves PageCount as it was.
/// Throws `subscript` past a bound.
void ParsePageList(Build& build);

} // namespace kiv
