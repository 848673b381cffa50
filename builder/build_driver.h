// The "Do it!" build.
#pragma once

#include "blocks/block_memory.h"
#include "builder/build_options.h"
#include "builder/output_roots.h"
#include "platform/machine.h"

namespace kiv {

/// Builds the current directory: the single page when `_singlehtml.txt` exists, then the ordinary
/// output and the passes for the ASP and HTM roots, then the navigation files; the status text
/// tells the number of pages. Throws RunError with its place, and Stopped between two pages when
/// the reporter was asked for that; files finished before it stay.
/// `roots` becomes what the page list declares, also when the build fails; it stays as it is when
/// there is nothing to build.
void BuildSite(Machine& machine, const BuildOptions& options, BlockMemory& blocks,
               OutputRoots& roots);

} // namespace kiv
