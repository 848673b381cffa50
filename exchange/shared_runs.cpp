#include "exchange/shared_runs.h"

#include "exchange/shared_lines.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <functional>
#include <unordered_set>

namespace kiv {

namespace {

constexpr std::size_t kWindow = 200; // lines at each end that are looked at
constexpr std::size_t kMostFamilies = 12;
constexpr std::size_t kMostInVain = 3000; // pages that are compared with patterns none looks like
// What is common is so to a fourth of the pages; of those that are left then, to fewer.
constexpr std::array<std::size_t, 2> kParts = {4, 16};
constexpr std::size_t kMostRuns = 8;     // at each end
constexpr std::size_t kLeastLength = 40; // of a run, in characters, its lines' ends among them
constexpr std::size_t kSamples = 5;      // pages that are tried as the pattern of a family
constexpr std::size_t kWitnesses = 30;   // pages that tell how good a pattern is
constexpr std::size_t kLearnedFrom = 6;  // pages that are compared for their menus

using Lines = std::vector<std::string_view>;
using Numbers = std::vector<std::size_t>;

/// `count` of the numbers, spread over all of them.
Numbers SpreadOver(const Numbers& numbers, std::size_t count)
{
    if (numbers.size() <= count)
        return numbers;
    Numbers some;
    for (std::size_t i = 0; i < count; ++i)
        some.push_back(numbers[(2 * i + 1) * numbers.size() / (2 * count)]);
    return some;
}

/// The lines at one end of a page, those of the tail from the last one up.
Lines EndOf(const Lines& lines, bool is_head)
{
    const std::size_t count = std::min(lines.size(), kWindow);
    if (is_head)
        return {lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count)};
    return {lines.rbegin(), lines.rbegin() + static_cast<std::ptrdiff_t>(count)};
}

/// One end of all pages that no family has yet, compared with one of them.
class EndMatch {
  public:
    EndMatch(const std::vector<ComparedPage>& pages, const Numbers& open, std::size_t pattern,
             bool is_head, MenuForms& menus)
        : pages_(pages), open_(open), is_head_(is_head), pattern_(pattern), menus_(menus)
    {
        for (const std::size_t page : open) {
            ends_.push_back(EndOf(*pages[page].lines, is_head));
            known_.emplace_back(ends_.back().begin(), ends_.back().end());
        }
        LearnMenus();
        ChooseWays();
        menus_.ForgetUnused();
        for (std::size_t i = 0; i < open.size(); ++i)
            Match(i);
    }

    /// Those that a page of every `part` has, two of them at the least.
    std::vector<SharedRun> Runs(std::size_t part) const;

  private:
    void LearnMenus();
    void LearnFrom(std::size_t page);
    void ChooseWays();
    std::size_t CountOf(const CodedLine& way) const;
    void Match(std::size_t i);
    /// The pages (places in open_) that have lines first to last (of the pattern) on end.
    Numbers PagesWith(std::size_t line, const Numbers& among, bool goes_on) const;
    SharedRun MakeRun(std::size_t first, std::size_t last, const Numbers& having) const;
    std::size_t LengthOf(std::size_t first, std::size_t last) const;

    const std::vector<ComparedPage>& pages_;
    const Numbers& open_;
    bool is_head_;
    std::size_t pattern_;
    MenuForms& menus_;
    std::vector<Lines> ends_;
    std::vector<std::unordered_set<std::string_view>> known_;
    std::vector<CodedLine> ways_;  // for each line of the pattern's end
    std::vector<Numbers> matches_; // for each page, its line for each of these
};

void EndMatch::LearnMenus()
{
    for (const std::size_t page : SpreadOver(open_, kLearnedFrom))
        if (page != pattern_)
            LearnFrom(page);
}

/// Between lines that both pages have, those that differ are taken for each other in their order.
void EndMatch::LearnFrom(std::size_t page)
{
    const Lines lines = EndOf(*pages_[pattern_].lines, is_head_);
    const Lines others = EndOf(*pages_[page].lines, is_head_);
    const std::string& name = pages_[pattern_].values.menu_name;
    const std::string& other_name = pages_[page].values.menu_name;
    const Numbers matches = MatchLines(lines, others);
    std::size_t next = 0; // line of the other page
    for (std::size_t line = 0; line < lines.size(); ++line) {
        if (matches[line] != npos) {
            next = matches[line] + 1;
        } else if (next < others.size()) {
            menus_.Learn(lines[line], name, others[next]);
            menus_.Learn(others[next], other_name, lines[line]);
            ++next;
        }
    }
}

/// How many pages have such a line somewhere.
std::size_t EndMatch::CountOf(const CodedLine& way) const
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < open_.size(); ++i) {
        const auto told = way.On(pages_[open_[i]].values);
        count += told && known_[i].contains(*told) ? 1U : 0U;
    }
    return count;
}

/// The way to tell a line that most pages have somewhere.
void EndMatch::ChooseWays()
{
    const ComparedPage& pattern = pages_[pattern_];
    for (const std::string_view line : EndOf(*pattern.lines, is_head_)) {
        std::vector<CodedLine> ways = WaysToTell(line, pattern.values);
        if (std::optional<CodedLine> menu = menus_.Told(line, pattern.values.menu_name))
            ways.push_back(std::move(*menu));
        std::size_t best = 0;
        std::size_t most = 0;
        for (std::size_t way = 0; way < ways.size(); ++way)
            if (const std::size_t count = CountOf(ways[way]); count > most) {
                best = way;
                most = count;
            }
        ways_.push_back(std::move(ways[best]));
    }
}

void EndMatch::Match(std::size_t i)
{
    std::vector<std::string> told;
    for (const CodedLine& way : ways_)
        // A line feed is in no line.
        told.push_back(way.On(pages_[open_[i]].values).value_or("\n"));
    matches_.push_back(MatchLines(Lines(told.begin(), told.end()), ends_[i]));
}

Numbers EndMatch::PagesWith(std::size_t line, const Numbers& among, bool goes_on) const
{
    Numbers having;
    for (const std::size_t i : among) {
        const std::size_t at = matches_[i][line];
        if (at != npos && (!goes_on || matches_[i][line - 1] + 1 == at))
            having.push_back(i);
    }
    return having;
}

std::size_t EndMatch::LengthOf(std::size_t first, std::size_t last) const
{
    const Lines lines = EndOf(*pages_[pattern_].lines, is_head_);
    std::size_t length = 0;
    for (std::size_t line = first; line <= last; ++line)
        length += lines[line].size() + 2;
    return length;
}

SharedRun EndMatch::MakeRun(std::size_t first, std::size_t last, const Numbers& having) const
{
    SharedRun run;
    run.lines.assign(ways_.begin() + static_cast<std::ptrdiff_t>(first),
                     ways_.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    run.starts.assign(pages_.size(), npos);
    if (!is_head_)
        std::ranges::reverse(run.lines);
    for (const std::size_t i : having)
        run.starts[open_[i]] =
            is_head_ ? matches_[i][first] : pages_[open_[i]].lines->size() - 1 - matches_[i][last];
    return run;
}

std::vector<SharedRun> EndMatch::Runs(std::size_t part) const
{
    Numbers all(open_.size());
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = i;
    const std::size_t least = std::max<std::size_t>(2, open_.size() / part);
    std::vector<std::pair<std::size_t, SharedRun>> runs; // with their lengths
    for (std::size_t first = 0; first < ways_.size();) {
        Numbers having = PagesWith(first, all, false);
        if (having.size() < least) {
            ++first;
            continue;
        }
        std::size_t last = first;
        while (last + 1 < ways_.size()) {
            Numbers on = PagesWith(last + 1, having, true);
            const std::size_t most =
                std::max(having.size(), PagesWith(last + 1, all, false).size());
            // A run is cut where some of its pages go on in another way than the others.
            if (on.size() < least || on.size() * 20 < most * 19)
                break;
            having = std::move(on);
            ++last;
        }
        const std::size_t length = LengthOf(first, last);
        const bool has_codes = std::any_of(ways_.begin() + static_cast<std::ptrdiff_t>(first),
                                           ways_.begin() + static_cast<std::ptrdiff_t>(last) + 1,
                                           [](const CodedLine& line) { return line.HasCodes(); });
        if (length >= kLeastLength || has_codes)
            runs.emplace_back(length * having.size(), MakeRun(first, last, having));
        first = last + 1;
    }
    if (runs.size() > kMostRuns) {
        std::vector<std::size_t> lengths;
        lengths.reserve(runs.size());
        for (const auto& [length, run] : runs)
            lengths.push_back(length);
        std::ranges::sort(lengths, std::greater());
        std::erase_if(runs, [&](const auto& run) { return run.first < lengths[kMostRuns - 1]; });
    }
    std::vector<SharedRun> found;
    found.reserve(runs.size());
    for (auto& [length, run] : runs)
        found.push_back(std::move(run));
    if (!is_head_)
        std::ranges::reverse(found);
    return found;
}

std::size_t LengthOf(const SharedRun& run)
{
    std::size_t length = 0;
    for (const CodedLine& line : run.lines)
        length += line.HasCodes() ? 40 : line.Plain().size() + 2;
    return length;
}

/// How much of the ends of some other pages stands on a page, too, in characters.
std::size_t Likeness(const std::vector<ComparedPage>& pages, std::size_t pattern,
                     const Numbers& witnesses)
{
    std::size_t likeness = 0;
    for (const bool is_head : {true, false}) {
        const Lines end = EndOf(*pages[pattern].lines, is_head);
        const std::unordered_set<std::string_view> known(end.begin(), end.end());
        for (const std::size_t page : witnesses)
            if (page != pattern) // a long page would look most like itself
                for (const std::string_view line : EndOf(*pages[page].lines, is_head))
                    likeness += known.contains(line) ? line.size() + 2 : 0;
    }
    return likeness;
}

struct Pattern {
    std::size_t page = 0;
    std::size_t likeness = 0; // 0: it has no line that another one has, too
};

/// The page of `choices` that most open ones look like.
Pattern ChoosePattern(const std::vector<ComparedPage>& pages, const Numbers& open,
                      const Numbers& choices)
{
    const Numbers witnesses = SpreadOver(open, kWitnesses);
    Pattern best{choices.front(), 0};
    for (const std::size_t page : SpreadOver(choices, kSamples))
        if (const std::size_t likeness = Likeness(pages, page, witnesses); likeness > best.likeness)
            best = {page, likeness};
    return best;
}

/// Takes a page's later runs away where they overlap with earlier ones.
void PartRuns(PageFamily& family, std::size_t page)
{
    std::size_t end = 0;
    for (SharedRun& run : family.runs) {
        std::size_t& start = run.starts[page];
        if (start != npos && start < end)
            start = npos;
        if (start != npos)
            end = start + run.lines.size();
    }
}

/// Whether a page begins or ends with what is shared, or has half of it.
bool Belongs(const PageFamily& family, std::size_t page, std::size_t lines)
{
    std::size_t all = 0;
    std::size_t own = 0;
    bool is_at_end = false;
    for (const SharedRun& run : family.runs) {
        const std::size_t start = run.starts[page];
        all += LengthOf(run);
        if (start == npos)
            continue;
        own += LengthOf(run);
        is_at_end = is_at_end || start == 0 || start + run.lines.size() == lines;
    }
    return own > 0 && (own * 2 >= all || (is_at_end && own >= kLeastLength));
}

PageFamily FindFamily(const std::vector<ComparedPage>& pages, const Numbers& open,
                      std::size_t pattern, std::size_t part, MenuForms& menus)
{
    PageFamily family;
    family.runs = EndMatch(pages, open, pattern, true, menus).Runs(part);
    for (SharedRun& run : EndMatch(pages, open, pattern, false, menus).Runs(part))
        family.runs.push_back(std::move(run));
    for (const std::size_t page : open) {
        PartRuns(family, page);
        if (Belongs(family, page, pages[page].lines->size()))
            family.pages.push_back(page);
        else
            for (SharedRun& run : family.runs)
                run.starts[page] = npos;
    }
    std::erase_if(family.runs, [&](const SharedRun& run) {
        return std::ranges::count(run.starts, npos) + 1 >= std::ssize(run.starts);
    });
    return family;
}

/// Takes the families out of the open pages whose runs one page of every `part` has.
void TakeFamilies(const std::vector<ComparedPage>& pages, Numbers& open, std::size_t part,
                  MenuForms& menus, std::vector<PageFamily>& families)
{
    Numbers choices = open; // pages that may be the pattern of a family
    std::size_t in_vain = 0;
    while (!choices.empty() && families.size() < kMostFamilies && in_vain < kMostInVain) {
        const Pattern pattern = ChoosePattern(pages, open, choices);
        // Pages may still be alike where all their lines have variables: one is tried for that.
        if (pattern.likeness == 0 && (in_vain > 0 || part != kParts.front()))
            return;
        PageFamily family = FindFamily(pages, open, pattern.page, part, menus);
        if (family.pages.size() < 2) {
            std::erase(choices, pattern.page); // others may still look like each other
            in_vain += open.size();
            continue;
        }
        std::erase_if(
            open, [&](std::size_t page) { return std::ranges::binary_search(family.pages, page); });
        choices = open;
        families.push_back(std::move(family));
    }
}

} // namespace

std::vector<PageFamily> FindFamilies(const std::vector<ComparedPage>& pages, MenuForms& menus)
{
    Numbers open;
    for (std::size_t i = 0; i < pages.size(); ++i)
        if (!pages[i].lines->empty())
            open.push_back(i);
    std::vector<PageFamily> families;
    for (const std::size_t part : kParts)
        TakeFamilies(pages, open, part, menus, families);
    std::ranges::stable_sort(families, std::greater(),
                             [](const PageFamily& family) { return family.pages.size(); });
    return families;
}

} // namespace kiv
