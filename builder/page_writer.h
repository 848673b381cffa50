// The write loop: one output file a page, or all pages in `_singlehtml.txt`.
#pragma once

#include "builder/build_state.h"

namespace kiv {

/// Writes every page of the page list.
void WritePages(Build& build);

} // namespace kiv
