// At-variables: "@TITLE", "@PREV" and their kin.
#pragma once

#include "builder/merge_steps.h"

namespace kiv {

/// The step that replaces every at-variable of the current page, row by row in the format's order.
/// A value is searched by the rows after its own. "@PREVNO" and "@NEXTNO" cut the folders off the
/// neighbour's record for good. Returns whether there was one.
bool ReplaceAtVariables(MergedLine& line);

} // namespace kiv
