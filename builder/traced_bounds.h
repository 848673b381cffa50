// What the sources of a pass leave of the format's bounds, for the trace.
#pragma once

namespace kiv {

struct Build;

/// Tells of each bound how much of it is taken up, once the sources are read. Only where there is a
/// trace.
void TellBounds(const Build& build);

} // namespace kiv
