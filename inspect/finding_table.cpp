#include "inspect/finding_table.h"

#include "inspect/findings.h"

#include <utility>

namespace kiv {

namespace {

constexpr FindingRow kRows[] = {
    {"build-error", Severity::error, "The build ends in an error", FindBuildError},
    {"build-warning", Severity::warning, "The build has a warning", FindBuildWarnings},
};

} // namespace

void FindingSink::Add(const Place& where, std::string text, std::string suggestion)
{
    found_.push_back({row_.severity, row_.name, std::move(text), where, std::move(suggestion)});
}

std::span<const FindingRow> FindingRows()
{
    return kRows;
}

} // namespace kiv
