#include "faults/report_text.h"

#include "tests/support/json.h"

#include <algorithm>
#include <cctype>
#include <exception>

namespace kiv::faults {

namespace {

using test::Json;

/// Throws an exception when this is no report.
Report Read(const Json& json)
{
    Report report;
    for (const char* const key : {"status", "messages", "warnings"})
        json[key]; // must be there
    if (const Json error = json["error"]; !error.IsNull()) {
        report.failed = true;
        error["kind"].Text();
        report.error = error["text"].Text();
    }
    for (const Json& file : json["files"].Items())
        report.files.push_back(file.Text());
    const std::vector<std::string> keys = json.Keys();
    report.tells_of_renames = std::find(keys.begin(), keys.end(), "renamed") != keys.end();
    return report;
}

} // namespace

std::optional<Report> ReportOf(const std::string& text)
{
    try {
        Report report = Read(Json::Parse(text));
        if (report.failed && report.error.empty())
            return std::nullopt;
        return report;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool IsPathOf(std::string_view drive_path, std::string_view native)
{
    constexpr std::string_view kDrive = "c:\\";
    const auto same = [](char a, char b) {
        const auto lower = [](char c) {
            return c == '\\' ? '/' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        };
        return lower(a) == lower(b);
    };
    return drive_path.size() > kDrive.size() &&
           std::equal(drive_path.begin() + kDrive.size(), drive_path.end(), native.begin(),
                      native.end(), same);
}

} // namespace kiv::faults
