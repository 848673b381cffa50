// The merge: every line that reaches a page passes through MergeLine.
#pragma once

#include "builder/merge_steps.h"

namespace kiv {

/// Takes a line through the steps of the merge: filters it by pass, places the lists, expands
/// macros, references, server scripts and variables. Lists are written to the page's output. Throws
/// RunError for malformed constructs and expansions without end.
void MergeLine(MergedLine& line);

/// The step that takes the lines of other passes away and the prefix off those of this one.
bool FilterByPass(MergedLine& line);

} // namespace kiv
