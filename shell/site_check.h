// What would be wrong with a site before anybody sees it.
#pragma once

#include "inspect/external_links.h"
#include "inspect/finding.h"
#include "inspect/inspection.h"

#include <string>
#include <vector>

namespace kiv {

class Workspace;

/// The findings of the working directory and, where it has a group list, of its members. They are
/// built in memory with the New Year switch as it is; nothing on the disk is touched. An error that
/// ends a build is a finding. Throws RunError when there is nothing to look at. `external`, when it
/// is not null, gets the addresses on other hosts, section by section.
std::vector<Finding> CheckSite(Workspace& workspace, const FindingChoice& choice,
                               std::vector<ExternalLink>* external = nullptr);

} // namespace kiv
