// What `kiv-cli check` prints.
#pragma once

#include "cli/report.h"

#include <cstddef>
#include <iosfwd>
#include <vector>

namespace kiv {

/// Each finding, then how many are switched off. Nothing of it steers a terminal.
void PrintFindings(std::ostream& out, const std::vector<ReportedFinding>& findings,
                   std::size_t switched_off);

} // namespace kiv
