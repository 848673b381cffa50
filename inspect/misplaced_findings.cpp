// Lines that are taken for what they say, but where they stand are text as well or without effect.
#include "builder/page_directives.h"
#include "builder/page_list_parser.h"
#include "builder/trace_words.h"
#include "inspect/directive_slips.h"
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kRoot = "@ROOT =";
constexpr std::string_view kTitle = "@TITLE =";

bool IsDefinition(const SiteView& site, const SourceText& source, int line)
{
    return std::ranges::any_of(site.definitions, [&](const NumberDefinition& definition) {
        return &site.sources[definition.lines.source] == &source && definition.lines.first == line;
    });
}

/// Whether the directive is one of the whole list: the site's root, a folder for pages.
bool IsOfList(std::string_view line)
{
    const auto begins = [&](std::string_view word) { return StartsWithNoCase(line, word); };
    return begins(kRoot) ||
           (!begins(kPageStart) && std::ranges::any_of(ListDirectiveWords(), begins));
}

bool IsOfPage(std::string_view line)
{
    return !StartsWithNoCase(line, kRoot) &&
           std::ranges::any_of(PageDirectiveWords(),
                               [&](std::string_view word) { return StartsWithNoCase(line, word); });
}

/// Whether the page's second line is its title, so that another one is too many.
bool HasTitle(const SourceText& source, std::size_t index)
{
    while (index > 0 && !source.PartsOf(index).Has(LinePart::title))
        --index;
    return StartsWithNoCase(source.lines[index], kTitle);
}

class MisplacedLines {
  public:
    MisplacedLines(const SiteView& site, const SourceText& source, FindingSink& sink)
        : site_(site), source_(source), sink_(sink), slips_(DirectiveSlips(site, source)),
          lost_start_(HasByteOrderMark(source.bytes) ? 1 : 0)
    {
    }

    void LookAt(std::size_t index)
    {
        const LineParts parts = source_.PartsOf(index);
        const std::string_view line = source_.lines[index];
        const int number = static_cast<int>(index) + 1;
        FollowStarts(parts, number);
        if (parts.Has(LinePart::before_pages)) {
            if (parts.HasRole() && IsOfPage(line) && lost_start_ == 0)
                Add(number, "stands above the first page, so it has no effect",
                    "put it below the \"@TITLE =\" of the page that it is for");
        } else if (!parts.Has(LinePart::body)) {
            return;
        } else if (IsDefinition(site_, source_, number) || (parts.HasRole() && IsOfList(line))) {
            Add(number, "stands in a page, where it is text as well",
                "put it above the first \"@FILE =\"");
        } else if (parts.HasRole() && StartsWithNoCase(line, kTitle) && lost_start_ == 0 &&
                   HasTitle(source_, index)) {
            Add(number, "is a second title of its page, where it is text as well",
                "take it out, or begin a page by a line \"@FILE =\" above it");
        } else if (IsInclude(line)) {
            Add(number, "stands in an included file, so visitors read it",
                "put it into the page list itself");
        }
    }

  private:
    /// What is of a page that was meant to begin is rightly placed.
    void FollowStarts(const LineParts& parts, int line)
    {
        if (parts.Has(LinePart::page_start))
            lost_start_ = 0;
        const auto slip = std::ranges::find(slips_, line, &DirectiveSlip::line);
        if (slip != slips_.end() && slip->meant.starts_with(kPageStart))
            lost_start_ = line;
    }

    void Add(int line, std::string_view why, std::string_view todo)
    {
        sink_.Add(site_.PlaceOf(source_, line), Joined({Quoted(source_.Line(line)), " ", why}),
                  std::string(todo));
    }

    /// An included file does not include others.
    bool IsInclude(std::string_view line) const
    {
        return !source_.is_page_list && line.starts_with("++") && line.size() > 2 &&
               line.find_first_of("<>|\"*?") == npos &&
               site_.files.FileExists(site_.folder + std::string(line.substr(2)));
    }

    const SiteView& site_;
    const SourceText& source_;
    FindingSink& sink_;
    const std::vector<DirectiveSlip> slips_;
    int lost_start_ = 0; // the last line that was meant to begin a page and does not; 0: none
};

} // namespace

void FindMisplacedDirectives(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources) {
        if (!source.IsOfPageList())
            continue;
        MisplacedLines lines(site, source, sink);
        for (std::size_t index = 0; index < source.lines.size(); ++index)
            lines.LookAt(index);
    }
}

} // namespace kiv
