// The "Do it!" build.
#pragma once

#include "blocks/dispatcher.h"
#include "builder/build_options.h"
#include "platform/machine.h"

namespace kiv {

/// Builds the current directory: the single page when `_singlehtml.txt` exists, then the ordinary
/// output and the passes for the ASP and HTM roots, then the navigation files; the status text
/// tells the number of pages. Throws RunError with its place; files finished before it stay.
void BuildSite(Machine& machine, const BuildOptions& options, BlockMemory& blocks);

} // namespace kiv
