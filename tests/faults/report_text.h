// The JSON report of a run, as far as the questions go.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::faults {

struct Report {
    bool failed = false;
    bool tells_of_renames = false;
    std::string error; // its words; "" without one
    std::vector<std::string> files;
};

/// Nothing when the text is not one whole report.
std::optional<Report> ReportOf(const std::string& text);

/// Whether a drive path on C: is the native path below its folder; case does not count.
bool IsPathOf(std::string_view drive_path, std::string_view native);

} // namespace kiv::faults
