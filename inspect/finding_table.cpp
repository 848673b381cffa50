#include "inspect/finding_table.h"

#include "inspect/findings.h"

#include <utility>

namespace kiv {

namespace {

constexpr FindingRow kRows[] = {
    {"build-error", Severity::error, "The build ends in an error", FindBuildError},
    {"build-warning", Severity::warning, "The build has a warning", FindBuildWarnings},
    {"misspelled-directive", Severity::error,
     "A line nearly is a directive and is not taken as one", FindMisspelledDirectives},
    {"misspelled-variable", Severity::warning, "A word nearly is an at-variable and stays as it is",
     FindMisspelledVariables},
    {"misspelled-macro", Severity::warning, "A macro nearly has a name that is known",
     FindMisspelledMacros},
    {"page-twice", Severity::error, "Two pages of the list are written to one file",
     FindPagesTwice},
    {"undefined-number", Severity::error, "A number is used that the page list never defines",
     FindUndefinedNumbers},
    {"unused-number", Severity::note, "A number is defined that no page uses", FindUnusedNumbers},
    {"redefined-number", Severity::note, "A number is defined again, so that this has no effect",
     FindRedefinedNumbers},
    {"unknown-reference", Severity::error, "A reference names a page or group that is not there",
     FindUnknownReferences},
    {"unclosed-bracket", Severity::error, "A construct has no end, or an end has no construct",
     FindUnclosedBrackets},
    {"misspelled-tag", Severity::warning, "A <zu...> tag is none, or ends nothing",
     FindMisspelledTags},
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
