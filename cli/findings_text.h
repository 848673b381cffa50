// What `kiv-cli check` prints.
#pragma once

#include "cli/report.h"

#include <iosfwd>
#include <vector>

namespace kiv {

/// Each finding, then how many there are of each severity. Nothing of it steers a terminal.
void PrintFindings(std::ostream& out, const std::vector<ReportedFinding>& findings);

/// Each address on another host with its place.
void PrintExternalLinks(std::ostream& out, const std::vector<ReportedLink>& links);

} // namespace kiv
