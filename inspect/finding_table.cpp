#include "inspect/finding_table.h"

#include "inspect/findings.h"

#include <utility>

namespace kiv {

namespace {

constexpr FindingRow kRows[] = {
    {"build-error", Severity::error, "The build ends in an error", FindBuildError},
    {"build-warning", Severity::warning, "The build has a warning", FindBuildWarnings},

    {"dead-link", Severity::error, "A link leads to nothing in the site", FindDeadLinks},
    {"dead-anchor", Severity::warning, "A link leads to a place that its page does not have",
     FindDeadAnchors},
    {"dead-picture", Severity::error, "A picture is not there", FindDeadPictures},
    {"dead-style", Severity::error, "A style sheet is not there", FindDeadStyles},
    {"dead-script", Severity::error, "A script is not there", FindDeadScripts},
    {"dead-frame", Severity::error, "The page of a frame is not there", FindDeadFrames},
    {"dead-form", Severity::error, "What a form is sent to is not there", FindDeadForms},
    {"letter-case", Severity::error, "An address has other capital letters than the file",
     FindLetterCase},
    {"drive-path", Severity::error, "An address is on this computer's disk", FindDrivePaths},
    {"backslash", Severity::warning, "An address has \"\\\"", FindBackslashes},
    {"picture-size", Severity::warning, "A picture is shown in another shape than its own",
     FindPictureSizes},
    {"id-twice", Severity::warning, "A page gives an id twice", FindIdsTwice},
    {"left-over", Severity::warning, "Visitors read what looks like a construct", FindLeftOvers},
    {"stale-page", Severity::note, "A page that the list no longer writes is still there",
     FindStalePages},
    {"link-to-stale-page", Severity::warning, "A link leads to such a page", FindLinksToStalePages},
    {"unlinked-page", Severity::note, "No page links to a page", FindUnlinkedPages},
    {"unused-picture", Severity::note, "No page shows a picture", FindUnusedPictures},
    {"unread-page", Severity::note, "A page is too deep or too large to be looked at",
     FindUnreadPages},
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
