// What a call printed with --json, read back.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::fuzz {

/// Texts are Windows-1252.
struct Report {
    std::string error; // kind; empty: none
    std::string error_text;
    std::vector<std::string> files;
    std::vector<std::pair<std::string, std::string>> renamed; // old name, new name
    std::vector<std::pair<int, std::string>>
        lines;                         // that "why" told of: number, 0 for none, and text
    std::vector<std::string> findings; // their names
    std::string result;                // empty where there is none
};

/// Reads a report. Fails when it is not one whole JSON object with all that a report has, of the
/// right kinds, or when it tells of an error and the exit code does not, or the other way round.
Report ReadReport(std::string_view json, int exit_code);

} // namespace kiv::fuzz
