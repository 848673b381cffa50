// Cross-page references: "!!1[…]" and "$$1[…]" macros, "??1[…]" page and "?!1[…]" group references.
// Each expander gives what stands in the place of one use; `definition` is that of its number, ""
// when the page list has none.
#pragma once

#include "builder/arguments.h"

#include <string_view>

namespace kiv {

struct MergedLine;

// The warnings of references that nobody defines; of the first the line follows.
inline constexpr std::string_view kNoPageRefWarning =
    "You're missing ?? = in the _html.txt file: \r\n";
inline constexpr std::string_view kNoGroupRefWarning =
    "You're missing a ?! = in the _html.txt file";

/// Before an id that stands for the name of a page, in a page or group reference.
inline constexpr std::string_view kIdMark = "ID:";

/// A use without a definition vanishes.
Expansion ExpandNumbered(const BracketUse& use, std::string_view definition, MergedLine& line);

/// Takes the yes half of the definition when the use names the current page, else the no half. The
/// folder is cut from the page's record for good. Throws `invalid-argument` on a definition without
/// "|", `subscript` on a use without a field.
Expansion ExpandPageRef(const BracketUse& use, std::string_view definition, MergedLine& line);

/// Takes the first half when group and page match, the second when only the group does, else the
/// third. The folder is cut from the page's record for good. Throws `subscript` on a definition of
/// fewer than three parts or a use of fewer than two fields.
Expansion ExpandGroupRef(const BracketUse& use, std::string_view definition, MergedLine& line);

} // namespace kiv
