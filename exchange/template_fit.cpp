#include "exchange/template_fit.h"

#include "exchange/protected_line.h"
#include "exchange/shared_lines.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_set>
#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kBodyMark = "<!--BODY HERE-->";
constexpr std::size_t kMostSideLines = 400; // of a head or a tail
constexpr std::size_t kTriedPatterns = 5;   // pages that are tried as the pattern

using SideLines = std::vector<std::string_view>;
using SideNumbers = std::vector<std::size_t>;

/// On which pages a template's line stands.
enum class KeptOn { every, first, not_first, inner, not_last, last };
constexpr std::array<std::string_view, 6> kPlaceCodes = {"", "=1=", "=2=", "=5=", "=8=", "=9="};

bool IsKept(KeptOn place, std::size_t page, std::size_t count)
{
    const bool is_first = page == 0;
    const bool is_last = page + 1 == count;
    switch (place) {
    case KeptOn::first:
        return is_first;
    case KeptOn::not_first:
        return !is_first;
    case KeptOn::inner:
        return !is_first && !is_last;
    case KeptOn::not_last:
        return !is_last;
    case KeptOn::last:
        return is_last;
    case KeptOn::every:
        break;
    }
    return true;
}

/// A tag that a build fills with what the page's record has, in its one spelling.
struct MetaTag {
    std::string_view begin;
    std::string_view source; // in the template
    std::string_view directive;
};
constexpr std::array<MetaTag, 2> kMetaTags = {
    {{"<meta NAME=\"keywords\" CONTENT=\"", "<meta NAME=\"keywords\" CONTENT=\"\">",
      "@KEYWORDS = "},
     {"<meta NAME=\"description\" CONTENT=\"", "<meta NAME=\"description\" CONTENT=\"\">",
      "@DESCRIPTION = "}}};

/// What such a line has between the quotes; nothing when it is none.
std::optional<std::string_view> ContentOf(const MetaTag& tag, std::string_view line)
{
    if (!line.starts_with(tag.begin) || !line.ends_with("\">") ||
        line.size() < tag.begin.size() + 3)
        return std::nullopt;
    const std::string_view content =
        line.substr(tag.begin.size(), line.size() - tag.begin.size() - 2);
    return ProtectedPart(content) == content ? std::optional(content) : std::nullopt;
}

/// A line of the template, from the mark's far side on.
struct TemplateRow {
    CodedLine line;
    const MetaTag* tag = nullptr;
    KeptOn place = KeptOn::every;

    std::optional<std::string> Source() const
    {
        if (tag != nullptr)
            return std::string(tag->source);
        std::optional<std::string> source = line.Source();
        if (!source || source->empty())
            return std::nullopt;
        if (StartsWithNoCase(FromChar(*source, kNothing.size() + 1), "<title>"))
            source->erase(0, kNothing.size()); // only included files lose such lines
        if (source->starts_with('+'))
            source->insert(0, kNothing);
        return Joined({kPlaceCodes[static_cast<std::size_t>(place)], *source});
    }
};

/// The lines of a page on one side of the mark, from the page's end on.
struct PageSide {
    std::size_t page;
    SideLines lines;
    std::unordered_set<std::string_view> known;
};

/// One side of the pages with a mark, as one of them would have it.
class SideFit {
  public:
    SideFit(const std::vector<ComparedPage>& pages, const SideNumbers& marked,
            const SideNumbers& marks, std::size_t pattern, bool is_head, MenuForms& menus);

    /// How many lines of a page the rows are; nothing when they are none of its lines.
    std::optional<std::size_t> LengthOn(std::size_t i, std::vector<std::string>& directives) const;
    std::optional<std::vector<std::string>> Sources() const;
    void AddLines(std::vector<CodedLine>& lines) const;

  private:
    void LearnMenus(MenuForms& menus) const;
    TemplateRow BestRow(std::string_view line, std::size_t page, const MenuForms& menus) const;
    std::string Told(const TemplateRow& row, const PageSide& side) const;
    SideNumbers MatchesOn(const PageSide& side) const;
    void ChoosePlaces();
    template <typename HasRow>
    bool ChoosePlace(TemplateRow& row, const HasRow& has_row) const;
    std::size_t CountKept(KeptOn place) const;
    void AddRowsOf(const PageSide& side, KeptOn place, const MenuForms& menus);

    const std::vector<ComparedPage>& pages_;
    bool is_head_;
    std::vector<PageSide> sides_; // of the marked pages
    std::size_t pattern_;         // of sides_
    std::vector<TemplateRow> rows_;
};

SideFit::SideFit(const std::vector<ComparedPage>& pages, const SideNumbers& marked,
                 const SideNumbers& marks, std::size_t pattern, bool is_head, MenuForms& menus)
    : pages_(pages), is_head_(is_head), pattern_(pattern)
{
    for (const std::size_t page : marked) {
        const SideLines& lines = *pages[page].lines;
        const auto mark = lines.begin() + static_cast<std::ptrdiff_t>(marks[page]);
        PageSide& side = sides_.emplace_back();
        side.page = page;
        side.lines.assign(is_head ? lines.begin() : mark + 1, is_head ? mark : lines.end());
        if (!is_head)
            std::ranges::reverse(side.lines);
        if (side.lines.size() > kMostSideLines)
            side.lines.resize(kMostSideLines);
        side.known.insert(side.lines.begin(), side.lines.end());
    }
    LearnMenus(menus);
    for (const std::string_view line : sides_[pattern].lines)
        rows_.push_back(BestRow(line, sides_[pattern].page, menus));
    ChoosePlaces();
    if (sides_.front().page == 0 && pattern != 0)
        AddRowsOf(sides_.front(), KeptOn::first, menus);
    if (sides_.back().page + 1 == pages.size() && pattern + 1 != sides_.size())
        AddRowsOf(sides_.back(), KeptOn::last, menus);
}

void SideFit::LearnMenus(MenuForms& menus) const
{
    const PageSide& own = sides_[pattern_];
    const std::string& name = pages_[own.page].values.menu_name;
    for (std::size_t i = 0; i < sides_.size(); i += 1 + sides_.size() / kTriedPatterns)
        for (std::size_t line = 0; line < own.lines.size() && line < sides_[i].lines.size();
             ++line) {
            const std::string& other_name = pages_[sides_[i].page].values.menu_name;
            menus.Learn(own.lines[line], name, sides_[i].lines[line]);
            menus.Learn(sides_[i].lines[line], other_name, own.lines[line]);
        }
}

/// The way to tell a line that most pages have somewhere.
TemplateRow SideFit::BestRow(std::string_view line, std::size_t page, const MenuForms& menus) const
{
    for (const MetaTag& tag : kMetaTags)
        if (is_head_ && ContentOf(tag, line))
            return {CodedLine(std::string(line)), &tag, KeptOn::every};
    std::vector<CodedLine> ways = WaysToTell(line, pages_[page].values);
    if (std::optional<CodedLine> menu = menus.Told(line, pages_[page].values.menu_name))
        ways.push_back(std::move(*menu));
    std::size_t best = 0;
    std::size_t most = 0;
    for (std::size_t way = 0; way < ways.size(); ++way) {
        const auto has_it = [&](const PageSide& side) {
            const auto told = ways[way].On(pages_[side.page].values);
            return told && side.known.contains(*told);
        };
        const auto count = static_cast<std::size_t>(std::ranges::count_if(sides_, has_it));
        if (count > most) {
            best = way;
            most = count;
        }
    }
    return {std::move(ways[best]), nullptr, KeptOn::every};
}

/// The row as a page would have it; a line feed, which is in no line, where it cannot.
std::string SideFit::Told(const TemplateRow& row, const PageSide& side) const
{
    if (row.tag == nullptr)
        return row.line.On(pages_[side.page].values).value_or("\n");
    const auto own = std::ranges::find_if(
        side.lines, [&](std::string_view line) { return ContentOf(*row.tag, line).has_value(); });
    return own == side.lines.end() ? "\n" : std::string(*own);
}

SideNumbers SideFit::MatchesOn(const PageSide& side) const
{
    std::vector<std::string> told;
    for (const TemplateRow& row : rows_)
        told.push_back(Told(row, side));
    return MatchLines(SideLines(told.begin(), told.end()), side.lines);
}

/// The place that most pages agree to. Returns whether enough do; in a tail, where the pages' own
/// text begins somewhere, most of those that would have the row must.
template <typename HasRow>
bool SideFit::ChoosePlace(TemplateRow& row, const HasRow& has_row) const
{
    std::size_t most = 0;
    std::size_t having = 0; // of those that it is kept on
    for (std::size_t place = 0; place < kPlaceCodes.size(); ++place) {
        std::size_t agreeing = 0;
        std::size_t present = 0;
        for (std::size_t i = 0; i < sides_.size(); ++i) {
            const bool is_kept = IsKept(static_cast<KeptOn>(place), sides_[i].page, pages_.size());
            agreeing += is_kept == has_row(i) ? 1U : 0U;
            present += is_kept && has_row(i) ? 1U : 0U;
        }
        if (agreeing > most) {
            most = agreeing;
            having = present;
            row.place = static_cast<KeptOn>(place);
        }
    }
    return most * 2 > sides_.size() && IsKept(row.place, sides_[pattern_].page, pages_.size()) &&
           (is_head_ || having * 4 > CountKept(row.place) * 3) && row.Source();
}

/// Gives each row its place, takes away those that have none, and ends a tail at the first of them:
/// there the pages' own text begins.
void SideFit::ChoosePlaces()
{
    std::vector<SideNumbers> matches;
    for (const PageSide& side : sides_)
        matches.push_back(MatchesOn(side));
    std::vector<TemplateRow> placed;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (ChoosePlace(rows_[row], [&](std::size_t i) { return matches[i][row] != npos; }))
            placed.push_back(rows_[row]);
        else if (!is_head_)
            break;
    }
    // What only one page has next to its text is most likely part of that.
    while (!is_head_ && !placed.empty() && CountKept(placed.back().place) < 2)
        placed.pop_back();
    rows_ = std::move(placed);
}

std::size_t SideFit::CountKept(KeptOn place) const
{
    return static_cast<std::size_t>(std::ranges::count_if(
        sides_, [&](const PageSide& side) { return IsKept(place, side.page, pages_.size()); }));
}

/// Adds the rows that only the first or the last page has.
void SideFit::AddRowsOf(const PageSide& side, KeptOn place, const MenuForms& menus)
{
    const SideNumbers matches = MatchesOn(side);
    std::vector<TemplateRow> rows;
    std::size_t next = 0;
    const auto add_until = [&](std::size_t end) {
        for (; next < end; ++next)
            rows.push_back({BestRow(side.lines[next], side.page, menus).line, nullptr, place});
    };
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (matches[row] != npos) {
            add_until(matches[row]);
            next = matches[row] + 1;
        }
        rows.push_back(rows_[row]);
    }
    if (is_head_)
        add_until(side.lines.size());
    rows_ = std::move(rows);
}

std::optional<std::size_t> SideFit::LengthOn(std::size_t i,
                                             std::vector<std::string>& directives) const
{
    const PageSide& side = sides_[i];
    std::size_t next = 0;
    for (const TemplateRow& row : rows_) {
        if (!IsKept(row.place, side.page, pages_.size()))
            continue;
        if (next == side.lines.size() || Told(row, side) != side.lines[next])
            return std::nullopt;
        if (row.tag != nullptr)
            directives.push_back(
                Joined({row.tag->directive, *ContentOf(*row.tag, side.lines[next])}));
        ++next;
    }
    return !is_head_ || next == side.lines.size() ? std::optional(next) : std::nullopt;
}

std::optional<std::vector<std::string>> SideFit::Sources() const
{
    std::vector<std::string> sources;
    for (const TemplateRow& row : rows_) {
        const std::optional<std::string> source = row.Source();
        if (!source)
            return std::nullopt;
        sources.push_back(*source);
    }
    if (!is_head_)
        std::ranges::reverse(sources);
    return sources;
}

void SideFit::AddLines(std::vector<CodedLine>& lines) const
{
    for (const TemplateRow& row : rows_)
        lines.push_back(row.line);
}

/// What a page keeps. Its list has one line for nothing before the text, and further ones where the
/// text begins with empty lines.
FittedPage KeptBy(const ComparedPage& page, std::size_t mark, std::size_t tail,
                  std::vector<std::string> directives)
{
    FittedPage kept{true, mark + 1, page.lines->size() - tail, std::move(directives)};
    for (std::size_t i = 1; i < kept.directives.size(); ++i)
        if (kept.first == kept.end || !(*page.lines)[kept.first++].empty())
            return {};
    return kept;
}

std::size_t CountOf(const TemplateFit& fit)
{
    return static_cast<std::size_t>(std::ranges::count(fit.pages, true, &FittedPage::fits));
}

TemplateFit FitTo(const std::vector<ComparedPage>& pages, const SideNumbers& marked,
                  const SideNumbers& marks, std::size_t pattern, MenuForms& menus)
{
    TemplateFit fit;
    fit.pages.resize(pages.size());
    const SideFit head(pages, marked, marks, pattern, true, menus);
    const SideFit tail(pages, marked, marks, pattern, false, menus);
    std::optional<std::vector<std::string>> head_lines = head.Sources();
    std::optional<std::vector<std::string>> tail_lines = tail.Sources();
    if (!head_lines || !tail_lines)
        return fit;
    fit.head = std::move(*head_lines);
    fit.tail = std::move(*tail_lines);
    head.AddLines(fit.coded);
    tail.AddLines(fit.coded);
    for (std::size_t i = 0; i < marked.size(); ++i) {
        const std::size_t page = marked[i];
        std::vector<std::string> directives;
        const bool has_head = head.LengthOn(i, directives).has_value();
        const std::optional<std::size_t> length = tail.LengthOn(i, directives);
        if (has_head && length)
            fit.pages[page] = KeptBy(pages[page], marks[page], *length, std::move(directives));
    }
    return fit;
}

} // namespace

TemplateFit FitTemplate(const std::vector<ComparedPage>& pages, MenuForms& menus)
{
    TemplateFit best;
    best.pages.resize(pages.size());
    SideNumbers marks(pages.size(), npos);
    SideNumbers marked;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const auto mark = std::ranges::find_if(
            *pages[i].lines, [](std::string_view line) { return EqualsNoCase(line, kBodyMark); });
        if (mark == pages[i].lines->end() ||
            mark - pages[i].lines->begin() > static_cast<std::ptrdiff_t>(kMostSideLines) ||
            (!best.mark.empty() && *mark != best.mark))
            continue;
        best.mark = *mark;
        marks[i] = static_cast<std::size_t>(mark - pages[i].lines->begin());
        marked.push_back(i);
    }
    if (marked.size() < 2)
        return best;
    std::size_t most = 0; // lines that pages have from the template, all together
    for (std::size_t i = 0; i < kTriedPatterns; ++i) {
        const std::size_t pattern = (2 * i + 1) * marked.size() / (2 * kTriedPatterns);
        TemplateFit fit = FitTo(pages, marked, marks, pattern, menus);
        fit.mark = best.mark;
        const std::size_t count = CountOf(fit);
        const std::size_t lines = count * (fit.head.size() + fit.tail.size());
        if (count > 1 && lines > most) {
            most = lines;
            best = std::move(fit);
        }
    }
    // Half of the pages or more: fewer than that have more in common with others by shared parts.
    if (CountOf(best) * 2 < marked.size())
        best = {{}, {}, {}, std::vector<FittedPage>(pages.size()), {}};
    menus.ForgetUnused();
    return best;
}

} // namespace kiv
