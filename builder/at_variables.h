// At-variables: "@TITLE", "@PREV" and their kin.
#pragma once

#include "builder/build_state.h"

#include <string>
#include <string_view>

namespace kiv {

/// Replaces every at-variable of the current page in `line`, row by row in the format's order. A
/// value is searched by the rows after its own. "@PREVNO" and "@NEXTNO" cut the folders off the
/// neighbour's record for good. Returns whether
/// there was one.
bool ReplaceAtVariables(std::string& line, Triggers triggers, Build& build);

/// Replaces every occurrence of `name` in `line` by `value`, ignoring case.
void ReplaceAtVariable(std::string& line, std::string_view name, std::string_view value);

} // namespace kiv
