// The lines of the template, which tell on which pages they stand.
#pragma once

#include "builder/merge_steps.h"

namespace kiv {

/// Takes a template line through its own steps and the merge, and writes it to the page's output,
/// unless it ends up empty.
void WriteTemplateLine(MergedLine& line);

} // namespace kiv
