// Marks that leave out what follows because nothing closes them.
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/news_composer.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kNamedPages = 3;

/// Whether the stretch goes on to the end of its file without a mark that closes it.
bool IsOpen(const SourceText& source, const SkippedLines& skipped)
{
    if (skipped.mark == SkippedLines::Mark::stop)
        return true; // a build tells of others in another way
    const SourceLines& lines = skipped.lines;
    return lines.last <= lines.first || !IsYearEnd(source.Line(lines.last));
}

/// The news composer leaves its mark open: with New Year off, the newest page alone is built.
bool IsOfComposer(const SourceText& source, int line)
{
    return source.Line(line) == Before(kNewsEntryEnd, '\r') && source.Line(line + 1).empty() &&
           StartsWithNoCase(source.Line(line - 1), Joined({"++", kNewsArticleFolder}));
}

/// What an open mark leaves out: the lines below it and, behind a "@@stop", all others of the list.
std::vector<SourceLines> LeftOut(const SiteView& site, const SkippedLines& skipped)
{
    std::vector<SourceLines> stretches{
        {skipped.lines.source, skipped.lines.first + 1, skipped.lines.last}};
    for (const UnusedLines& unused : site.unused) {
        const auto is_same = [&](const SourceLines& one) {
            return one.source == unused.lines.source && one.first == unused.lines.first;
        };
        if (skipped.mark == SkippedLines::Mark::stop && unused.reason == kReadEnded &&
            std::ranges::none_of(stretches, is_same)) // another pass tells of it again
            stretches.push_back(unused.lines);
    }
    return stretches;
}

/// The pages that begin in these lines, and how many lines there are.
std::vector<std::string_view> PagesIn(const SiteView& site,
                                      const std::vector<SourceLines>& stretches, int& lines)
{
    std::vector<std::string_view> pages;
    for (const SourceLines& stretch : stretches)
        for (int line = stretch.first; line <= stretch.last; ++line, ++lines)
            if (const std::string_view text = site.sources[stretch.source].Line(line);
                StartsWithNoCase(text, kPageStart))
                pages.push_back(Trim(FromChar(text, kPageStart.size() + 2)));
    return pages;
}

/// ", with 3 pages: about, ships, maps"; "" for none.
std::string PagesText(const std::vector<std::string_view>& pages)
{
    if (pages.empty())
        return {};
    std::string text = Joined({", with ", Decimal(static_cast<long long>(pages.size())),
                               pages.size() == 1 ? " page: " : " pages: "});
    for (std::size_t index = 0; index < pages.size() && index < kNamedPages; ++index)
        Append(text, {index == 0 ? "" : ", ", pages[index]});
    if (pages.size() > kNamedPages)
        Append(text,
               {" and ", Decimal(static_cast<long long>(pages.size() - kNamedPages)), " more"});
    return text;
}

std::string LeftOutText(const SiteView& site, const SkippedLines& skipped)
{
    int lines = 0;
    const std::vector<std::string_view> pages = PagesIn(site, LeftOut(site, skipped), lines);
    if (lines == 0)
        return ", so whatever comes below is left out";
    return Joined({", so ", Decimal(lines), lines == 1 ? " line is" : " lines are", " left out",
                   PagesText(pages)});
}

void FindOpen(const SiteView& site, SkippedLines::Mark mark, std::string_view closing,
              FindingSink& sink)
{
    for (const SkippedLines& skipped : site.skipped) {
        if (skipped.mark != mark)
            continue;
        const SourceText& source = site.sources[skipped.lines.source];
        if (!IsOpen(source, skipped) || IsOfComposer(source, skipped.lines.first))
            continue;
        sink.Add(site.PlaceOf(source, skipped.lines.first),
                 Joined({"no ", closing, " follows", LeftOutText(site, skipped)}),
                 Joined({"put a line ", closing, " where this should end"}));
    }
}

} // namespace

void FindOpenYearEnd(const SiteView& site, FindingSink& sink)
{
    FindOpen(site, SkippedLines::Mark::year_end, kYearEndMark, sink);
}

void FindOpenStop(const SiteView& site, FindingSink& sink)
{
    FindOpen(site, SkippedLines::Mark::stop, "@@start", sink);
}

} // namespace kiv
