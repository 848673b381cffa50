#include "inspect/finding.h"

#include <algorithm>
#include <cstddef>

namespace kiv {

namespace {

/// "2 errors", "1 note".
std::string Counted(std::span<const Finding> findings, Severity severity)
{
    const auto count = std::ranges::count(findings, severity, &Finding::severity);
    return std::to_string(count) + " " + std::string(SeverityName(severity)) +
           (count == 1 ? "" : "s");
}

} // namespace

std::string_view SeverityName(Severity severity)
{
    constexpr std::string_view kNames[] = {"note", "warning", "error"};
    return kNames[static_cast<std::size_t>(severity)];
}

std::string CountText(std::span<const Finding> findings)
{
    if (findings.empty())
        return "nothing found";
    return Counted(findings, Severity::error) + ", " + Counted(findings, Severity::warning) + ", " +
           Counted(findings, Severity::note);
}

} // namespace kiv
