// The renames of a renamer's JSON report.
#pragma once

#include "shell/directory_tools.h"

#include <string>
#include <string_view>

namespace kiv {

/// The pairs under "renamed" in `json`, which was read from `path`. Throws RunError of kind
/// `invalid_argument` when it is no such report.
Renames RenamesOfReport(std::string_view json, const std::string& path);

} // namespace kiv
