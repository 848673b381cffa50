// The write loop: one output file a page, or all pages in `_singlehtml.txt`.
#pragma once

namespace kiv {

struct Build;

/// Writes every page of the page list.
void WritePages(Build& build);

} // namespace kiv
