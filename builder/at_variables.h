// At-variables: "@TITLE", "@PREV" and their kin.
#pragma once

#include "builder/merge_steps.h"

#include <string_view>
#include <vector>

namespace kiv {

/// The names of all at-variables, and "<style>", which is replaced as they are.
std::vector<std::string_view> AtVariableNames();

/// The step that replaces every at-variable of the current page, row by row in the format's order.
/// A value is searched by the rows after its own. "@PREVNO" and "@NEXTNO" cut the folders off the
/// neighbour's record for good. Returns whether there was one.
bool ReplaceAtVariables(MergedLine& line);

} // namespace kiv
