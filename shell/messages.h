// What the last command has to tell, as one list: for a face that shows it.
#pragma once

#include "inspect/finding.h"
#include "platform/reporter.h"
#include "platform/run_error.h"

#include <optional>
#include <vector>

namespace kiv {

class Workspace;

/// The findings of a check; of other commands their warnings, then the error that ended them.
std::vector<Finding> MessagesOf(const Workspace& workspace, const std::vector<Warning>& warnings,
                                const std::optional<RunError>& error);

} // namespace kiv
