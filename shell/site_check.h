// What would be wrong with a site before anybody sees it.
#pragma once

#include "inspect/inspection.h"

namespace kiv {

class Workspace;

/// The findings of the working directory and, where it has a group list, of its members. They are
/// built in memory with the New Year switch as it is; nothing on the disk is touched. An error that
/// ends a build is a finding. Throws RunError when there is nothing to look at, Stopped when the
/// reporter is asked to stop.
Inspection CheckSite(Workspace& workspace, const FindingChoice& choice);

/// The same into the workspace's findings; the status tells how many there are.
void CheckWorkDir(Workspace& workspace, const FindingChoice& choice = {});

} // namespace kiv
