#include "inspect/finding_table.h"

#include "inspect/check_list.h"
#include "inspect/findings.h"
#include "text/table_column.h"

#include <utility>

namespace kiv {

namespace {

constexpr FindingRow kRows[] = {
    {"build-error", Severity::error, "The build ends in an error", FindBuildError},
    {"build-warning", Severity::warning, "The build has a warning", FindBuildWarnings},
    {"missing-include", Severity::error, "A file that a line with ++ or + names is not there",
     FindMissingIncludes},
    {"no-output-folder", Severity::error, "The folder that pages are written into is not there",
     FindNoOutputFolder},
    {"page-over-source", Severity::error, "A page is written over a file that the site needs",
     FindPagesOverSources},
    {"misspelled-directive", Severity::error,
     "A line is nearly a directive, a switch or a definition", FindMisspelledDirectives},
    {"misplaced-directive", Severity::error,
     "A directive or a definition stands where it is text, or has no effect",
     FindMisplacedDirectives},
    {"misspelled-variable", Severity::warning, "A word is nearly an at-variable, and is none",
     FindMisspelledVariables},
    {"misspelled-macro", Severity::warning, "The name of a macro is nearly one that is known",
     FindMisspelledMacros},
    {"eaten-address", Severity::warning,
     "A part of a mail address or of a style sheet is taken for an at-variable",
     FindEatenAddresses},
    {"no-pages", Severity::error, "The page list has no page", FindNoPages},
    {"missing-title", Severity::error,
     "A page has no @TITLE = below its @FILE =", FindMissingTitles},
    {"page-twice", Severity::error, "Two pages of the list are written to one file",
     FindPagesTwice},
    {"undefined-number", Severity::error, "A number is used that the page list never defines",
     FindUndefinedNumbers},
    {"unused-number", Severity::note, "A number is defined that no page uses", FindUnusedNumbers},
    {"redefined-number", Severity::note,
     "A number is defined again, so this definition has no effect", FindRedefinedNumbers},
    {"unknown-reference", Severity::error, "A reference names a page or group that is not there",
     FindUnknownReferences},
    {"missing-field", Severity::warning, "A reference has too few fields, and visitors read !3",
     FindMissingFields},
    {"id-of-two-pages", Severity::warning, "Two pages have the same @ID", FindIdsOfTwoPages},
    {"unclosed-bracket", Severity::error, "A construct has no end, or an end no construct",
     FindUnclosedBrackets},
    {"misspelled-tag", Severity::warning, "A block tag is misspelled, or ends nothing",
     FindMisspelledTags},
    {"unclosed-tag", Severity::error, "A block tag has no end", FindUnclosedTags},
    {"missing-list", Severity::error, "The page list or the template is not there",
     FindMissingLists},
    {"no-body-mark", Severity::error, "The template has no line <!--BODY HERE-->", FindNoBodyMark},
    {"body-mark-not-alone", Severity::error, "<!--BODY HERE--> is not alone on its line",
     FindBodyMarkNotAlone},
    {"body-mark-twice", Severity::error, "The template has a second line <!--BODY HERE-->",
     FindBodyMarkTwice},
    {"eoy-open", Severity::error, "An @@EOY is not closed and leaves out what follows",
     FindOpenYearEnd},
    {"stop-open", Severity::error, "An @@stop has no @@start and leaves out what follows",
     FindOpenStop},
    {"row-without-tab", Severity::warning, "A table row has no TAB between its cells",
     FindRowsWithoutTab},
    {"quiz-doubled-mark", Severity::warning, "A quiz's mark is taken for a numbered variable",
     FindDoubledQuizMarks},
    {"byte-order-mark", Severity::error, "A source begins with a byte order mark",
     FindByteOrderMarks},
    {"utf-16", Severity::error, "A source is UTF-16", FindUtf16},
    {"lone-cr", Severity::warning, "A CR without LF does not end a line", FindLoneCarriageReturns},
    {"wrong-charset", Severity::warning, "A source is in another character set than its pages say",
     FindWrongCharset},
    {"not-in-charset", Severity::warning,
     "Bytes stand for no character in the declared character set", FindOutsideCharset},
    {"news-mark-missing", Severity::warning, "The news composer finds no place for its lines",
     FindMissingNewsMarks},
    {"news-mark-line-end", Severity::warning,
     "No CR LF stands right behind a mark of the news composer", FindNewsMarkLineEnds},
    {"near-bound", Severity::warning, "The sources nearly reach one of the format's bounds",
     FindNearBounds},
    {"check-list", Severity::warning, "A line of _check.txt is not understood",
     FindCheckListFaults},
    {kUnusedCheckLine, Severity::note, "A line of _check.txt switches off nothing", nullptr},

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
    {"backslash", Severity::warning, "An address has a backslash", FindBackslashes},
    {"broken-picture", Severity::error, "A file that a page shows is no picture",
     FindBrokenPictures},
    {"picture-size", Severity::warning, "A picture is shown in another shape than its own",
     FindPictureSizes},
    {"id-twice", Severity::warning, "A page gives an id twice", FindIdsTwice},
    {"left-over", Severity::warning, "Visitors read what looks like a construct", FindLeftOvers},
    {"stale-page", Severity::note, "A page that the list no longer writes is still there",
     FindStalePages},
    {"link-to-stale-page", Severity::warning,
     "A link leads to a page that the list no longer writes", FindLinksToStalePages},
    {"unlinked-page", Severity::note, "No page links to a page", FindUnlinkedPages},
    {"unused-picture", Severity::note, "No page shows a picture", FindUnusedPictures},
    {"unread-page", Severity::note, "A page is too deep or too large to be looked at",
     FindUnreadPages},
};

} // namespace

void FindingSink::Add(const Place& where, std::string text, std::string suggestion)
{
    auto [entry, is_new] = seen_.try_emplace({text, std::string(where.file), where.line});
    Seen& seen = entry->second;
    if (is_new) {
        seen = {found_.size(), 1, std::string(where.page)};
        found_.push_back({row_.severity, row_.name, std::move(text), where, std::move(suggestion)});
    } else if (seen.last_page != where.page) { // pages are looked at one after the other
        ++seen.pages;
        seen.last_page = where.page;
    }
}

std::vector<Finding> FindingSink::Take()
{
    for (const auto& [place, seen] : seen_)
        if (seen.pages > 1)
            found_[seen.index].text.append(", on " + std::to_string(seen.pages) + " pages");
    return std::move(found_);
}

std::span<const FindingRow> FindingRows()
{
    return kRows;
}

std::vector<std::string_view> FindingNames()
{
    return ColumnOf(kRows, &FindingRow::name);
}

} // namespace kiv
