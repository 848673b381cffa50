// Numbered macros, wrappers, references and variables without a definition, and definitions without
// a use.
#include "builder/page_record.h"
#include "builder/trace_words.h"
#include "inspect/directive_slips.h"
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/news_marks.h"

#include <algorithm>
#include <array>
#include <set>

namespace kiv {

namespace {

/// What a number's family does.
struct FamilyWords {
    std::string_view fate;  // of a use that nobody defines
    std::string_view value; // of a definition, as an example
};

/// In the order of Family.
constexpr std::array<FamilyWords, 7> kFamilyWords = {{
    {"nothing stands in its place", "text"},
    {"the whole line is lost", "this page|another page"},
    {"nothing stands in its place", "text"},
    {"nothing stands in its place", "text with !1"},
    {"the build ends here", "before|behind"},
    {"the whole line is lost", "this page|this group|another group"},
    {"nothing stands in its place", "text with !1"},
}};

/// A mark such as "!!3", taken apart.
struct Number {
    explicit Number(std::string_view mark)
        : slot(mark.back() - '0'),
          family(static_cast<Family>(std::ranges::find(kFamilyMark, mark.substr(0, 2)) -
                                     kFamilyMark.begin()))
    {
    }
    /// "macro 3, !!3["
    std::string Text() const { return NumberWords(family, slot); }

    int slot;
    Family family;
};

void AddUndefined(const Place& where, std::string_view mark, FindingSink& sink)
{
    const Number number(mark);
    const FamilyWords& words = kFamilyWords[static_cast<std::size_t>(number.family)];
    sink.Add(where, Joined({"the page list never defines ", number.Text(), ", so ", words.fate}),
             Joined({"define it above the first page: ", mark, " = ", words.value}));
}

/// The marks of definitions that the build does not take, which are told by themselves.
std::set<std::string> MarksOfSlips(const SiteView& site)
{
    constexpr std::size_t kByteOrderMark = 3; // bytes
    std::set<std::string> marks;
    for (const SourceText& source : site.sources) {
        if (HasByteOrderMark(source.bytes) && !source.lines.empty())
            marks.emplace(
                source.lines[0].substr(std::min(kByteOrderMark, source.lines[0].size()), 3));
        for (const DirectiveSlip& slip : DirectiveSlips(site, source))
            if (slip.meant.size() > 3)
                marks.insert(slip.meant.substr(0, 3));
    }
    return marks;
}

/// Calls `take(line, mark)` for each "@@1" of a page's title and its kin.
template <typename Take>
void ForEachTitleNumber(const SiteView& site, Take take)
{
    for (const SourceText& source : site.sources)
        for (std::size_t index = 0; index < source.lines.size(); ++index) {
            const std::string_view line = source.lines[index];
            if (!source.PartsOf(index).Has(LinePart::title))
                continue;
            for (int digit = 1; digit <= 9; ++digit) {
                const NumberedMark mark(Family::at, digit);
                if (Contains(line, mark.View()))
                    take(site.PlaceOf(source, static_cast<int>(index) + 1), mark.View());
            }
        }
}

/// Whether a line of the list that is taken for something, such as a title, holds the mark. Its
/// value is put in while the list is read.
bool StandsInTakenLine(const SiteView& site, std::string_view mark)
{
    for (const SourceText& source : site.sources)
        for (std::size_t index = 0; index < source.lines.size(); ++index) {
            const LineParts parts = source.PartsOf(index);
            const bool is_taken = parts.HasRole() || parts.Has(LinePart::title);
            if (is_taken && source.lines[index].starts_with('@') &&
                source.lines[index].find(mark, 1) != npos)
                return true;
        }
    return false;
}

/// Whether a line that this build has not read holds the mark, such as one that waits for New Year.
bool StandsInUnreadLine(const SiteView& site, std::string_view mark)
{
    for (const SourceText& source : site.sources)
        for (std::size_t index = 0; index < source.lines.size(); ++index) {
            const std::string_view line = source.lines[index];
            if (!source.PartsOf(index).IsRead() && !line.starts_with(';') && Contains(line, mark))
                return true;
        }
    return false;
}

/// Whether the news composer will put uses of the mark into the list.
bool AwaitsNews(const SiteView& site, std::string_view mark)
{
    const SourceText* list = site.PageList();
    const auto has = [&](std::string_view news_mark) {
        return list != nullptr && Contains(list->bytes, NewsMarkLine(news_mark));
    };
    return (mark == "!!1" && has(kNewsLineMark)) || (mark == "!!2" && has(kNewsEntryMark));
}

/// Whether any page has, or may have, the value.
bool IsUsed(const SiteView& site, std::string_view mark)
{
    return site.numbers_used.contains(mark) || StandsInUnreadLine(site, mark) ||
           AwaitsNews(site, mark) || (mark.starts_with("@@") && StandsInTakenLine(site, mark));
}

/// The last definition of the same mark, which counts on every page.
const NumberDefinition& LastLike(const SiteView& site, const NumberDefinition& first)
{
    const NumberDefinition* last = &first;
    for (const NumberDefinition& definition : site.definitions)
        if (definition.mark == first.mark)
            last = &definition;
    return *last;
}

} // namespace

void FindUndefinedNumbers(const SiteView& site, FindingSink& sink)
{
    const std::set<std::string> slips = MarksOfSlips(site);
    for (const ConstructUse& use : site.undefined)
        if (!slips.contains(use.name))
            AddUndefined(site.PlaceOf(use), use.name, sink);
    ForEachTitleNumber(site, [&](const Place& where, std::string_view mark) {
        const bool is_defined =
            std::ranges::any_of(site.definitions, [&](const NumberDefinition& definition) {
                return definition.mark == mark;
            });
        if (!is_defined && !slips.contains(std::string(mark)))
            AddUndefined(where, mark, sink);
    });
}

/// A build that ended early, or came to no page, has not seen every use.
void FindUnusedNumbers(const SiteView& site, FindingSink& sink)
{
    for (const NumberDefinition& definition : site.definitions) {
        const Number number(definition.mark);
        const bool is_last = &LastLike(site, definition) == &definition;
        if (site.error || site.pages.empty() || !is_last || IsUsed(site, definition.mark))
            continue;
        sink.Add(site.PlaceOf(definition.lines, {}),
                 number.slot == 0
                     ? Joined({number.Text(), ", cannot be used: numbers go from 1 to 9"})
                     : Joined({"no page uses ", number.Text()}));
    }
}

void FindRedefinedNumbers(const SiteView& site, FindingSink& sink)
{
    for (const NumberDefinition& definition : site.definitions) {
        const NumberDefinition& last = LastLike(site, definition);
        // A title takes the value that stands above it.
        const bool is_in_titles =
            definition.mark.starts_with("@@") && StandsInTakenLine(site, definition.mark);
        if (&last == &definition || is_in_titles)
            continue;
        sink.Add(site.PlaceOf(definition.lines, {}),
                 Joined({"this definition of ", Number(definition.mark).Text(),
                         ", has no effect: there is another in ",
                         site.PlaceText(site.PlaceOf(last.lines, {}))}));
    }
}

} // namespace kiv
