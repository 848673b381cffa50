// What `kiv-cli check` prints.
#pragma once

#include "cli/report.h"

#include <iosfwd>
#include <vector>

namespace kiv {

/// Each finding. Nothing of it steers a terminal.
void PrintFindings(std::ostream& out, const std::vector<ReportedFinding>& findings);

} // namespace kiv
