#include "faults/report_text.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>

namespace kiv::faults {

namespace {

bool IsError(const nlohmann::json& error)
{
    return error.is_object() && error.contains("kind") && error["kind"].is_string() &&
           error.contains("text") && error["text"].is_string() && !error["text"].empty();
}

} // namespace

std::optional<Report> ReportOf(const std::string& text)
{
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, false);
    for (const char* const key : {"status", "messages", "error", "files", "warnings"})
        if (!json.is_object() || !json.contains(key))
            return std::nullopt;
    const nlohmann::json& error = json["error"];
    if (!error.is_null() && !IsError(error))
        return std::nullopt;
    Report report;
    report.failed = !error.is_null();
    if (report.failed)
        report.error = error["text"];
    report.tells_of_renames = json.contains("renamed");
    for (const nlohmann::json& file : json["files"])
        report.files.push_back(file);
    return report;
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
