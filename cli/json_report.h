// The JSON report of a run: the one unit that knows the JSON library writes and reads it.
#pragma once

#include "shell/directory_tools.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace kiv {

struct RunReport;

enum class JsonForm { indented, line };

/// One JSON object, UTF-8, and a line end.
void PrintJson(std::ostream& out, const RunReport& report, JsonForm form);

/// The pairs under "renamed" in a renamer's report, which was read from `path`. Throws RunError of
/// kind `invalid_argument` when it is no such report.
Renames RenamesOfReport(std::string_view json, const std::string& path);

} // namespace kiv
