// Cross-page references: "!!1[…]" and "$$1[…]" macros, "??1[…]" page and "?!1[…]" group references.
// Each expander rewrites the one use at `position` (0-based), which takes four characters before
// its arguments. It returns the first character that it has changed, or npos when the line is as it
// was.
#pragma once

#include "builder/build_messages.h"
#include "builder/page_record.h"

#include <cstddef>
#include <string>

namespace kiv {

/// `kind` is Family::bang or Family::dollar. A use without a definition vanishes.
std::size_t ExpandNumbered(std::string& line, std::size_t position, int digit, Family kind,
                           const NumberedVariables& variables, BuildMessages& messages);

/// Takes the yes half of the definition when the use names the current page, else the no half. The
/// folder is cut from `page.file` for good. Throws `invalid-argument` on a definition without "|",
/// `subscript` on a use without a field.
std::size_t ExpandPageRef(std::string& line, std::size_t position, int digit,
                          const NumberedVariables& variables, PageRecord& page,
                          BuildMessages& messages);

/// Takes the first half when group and page match, the second when only the group does, else the
/// third. The folder is cut from `page.file` for good. Throws `subscript` on a definition of fewer
/// than three halves or a use of fewer than two fields.
std::size_t ExpandGroupRef(std::string& line, std::size_t position, int digit,
                           const NumberedVariables& variables, PageRecord& page,
                           BuildMessages& messages);

} // namespace kiv
