#include "preview/element_source.h"

#include "blocks/table_cells.h"
#include "inspect/word_slips.h"
#include "text/changed_part.h"
#include "text/text.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace kiv {

namespace {

using Lines = std::vector<std::string_view>;

Lines LinesOf(std::string_view text)
{
    Lines lines;
    while (!text.empty())
        lines.push_back(TakeLine(text));
    return lines;
}

std::string_view TextAfter(const PageStory& story, std::size_t steps)
{
    return steps == 0 ? std::string_view(story.before) : story.steps[steps - 1].after;
}

/// Where the `n`-th "<" of a text stands; npos: it has fewer.
std::size_t FindTag(std::string_view text, std::ptrdiff_t n)
{
    std::size_t at = text.find('<');
    for (; n > 0 && at != npos; --n)
        at = text.find('<', at + 1);
    return at;
}

/// Where what stands at `at` after a step stood before it; npos: the step has put it there.
std::size_t PlaceBefore(std::string_view before, std::string_view after, std::size_t at)
{
    const ChangedPart change = ChangeBetween(before, after);
    if (at < change.from)
        return at;
    if (at >= change.from + change.put)
        return at - change.put + change.taken;
    // Text may have changed in several places, with tags between them that stayed.
    const std::string_view taken = before.substr(change.from, change.taken);
    const std::string_view put = after.substr(change.from, change.put);
    if (std::ranges::count(taken, '<') != std::ranges::count(put, '<'))
        return npos;
    const std::size_t in_put = at - change.from;
    const std::size_t old = FindTag(taken, std::ranges::count(put.substr(0, in_put), '<'));
    return old == npos ? npos : change.from + old;
}

/// Where a line of the page begins in the text of all that were made with it.
std::size_t BeginOf(std::string_view text, int of_story)
{
    std::size_t at = 0;
    for (int line = 1; line < of_story && at != npos; ++line) {
        const std::size_t end = text.find('\n', at);
        at = end == npos ? npos : end + 1;
    }
    return at;
}

/// The `index`-th line (0-based) of a place, where its lines are as many as the text's.
ToldPlace LineOf(ToldPlace place, std::size_t index, std::size_t count)
{
    if (static_cast<std::size_t>(place.last - place.first) + 1 != count)
        return place;
    place.first += static_cast<int>(index);
    place.last = place.first;
    return place;
}

/// What is to be read in a line of HTML, piece by piece.
Lines WordsOf(std::string_view html)
{
    Lines words;
    while (!html.empty()) {
        const std::string_view word = Trim(Before(html, '<'));
        if (!word.empty() && word != "&nbsp;")
            words.push_back(word);
        const std::size_t tag = std::min(html.find('<'), html.size());
        html.remove_prefix(std::min(html.find('>', tag), html.size() - 1) + 1);
    }
    return words;
}

bool EndsItsClasses(std::string_view cell)
{
    const std::size_t begin = cell.rfind("{{");
    return begin == npos || cell.find("}}", begin) != npos;
}

/// What is to be read in the cells of a table's row, piece by piece.
Lines WordsOfRow(std::string_view row)
{
    if (row.starts_with("h:"))
        row.remove_prefix(2);
    Lines words;
    for (std::string_view cell : Split(row, '\t')) {
        if (CellCodes codes; EndsItsClasses(cell)) // else it is no cell
            TakeCellCodes(cell, codes, ClassCode::braces);
        std::ranges::copy(WordsOf(cell), std::back_inserter(words));
    }
    return words;
}

bool IsPartOfWord(std::string_view text, std::size_t at)
{
    return at < text.size() && IsWordCharacter(text[at]);
}

/// Where a text is found that no longer word contains; npos: nowhere.
std::size_t FindWhole(std::string_view line, std::string_view words, std::size_t at)
{
    for (at = line.find(words, at); at != npos; at = line.find(words, at + 1)) {
        const std::size_t end = at + words.size();
        const bool goes_on_before = IsPartOfWord(words, 0) && at > 0 && IsPartOfWord(line, at - 1);
        const bool goes_on_behind =
            IsPartOfWord(words, words.size() - 1) && IsPartOfWord(line, end);
        if (!goes_on_before && !goes_on_behind)
            break;
    }
    return at;
}

bool HoldsInOrder(std::string_view line, const Lines& words)
{
    std::size_t at = 0;
    for (const std::string_view word : words) {
        at = FindWhole(line, word, at);
        if (at == npos)
            return false;
        at += word.size();
    }
    return true;
}

bool IsSetting(std::string_view line)
{
    return StartsWithNoCase(line, "class:") || StartsWithNoCase(line, "width:") || line == "cols:";
}

/// The first line of a block behind its opening tag and its settings.
std::size_t BeginOfContent(const Lines& block)
{
    std::size_t begin = 1;
    while (begin < block.size() && IsSetting(block[begin]))
        ++begin;
    return begin;
}

/// The line of a block, from `from` on and before the closing tag, that has these words: as its
/// cells, or else in its text; npos: none has.
std::size_t FindLine(const Lines& block, const Lines& words, std::size_t from)
{
    if (words.empty())
        return npos;
    const std::size_t end = block.size() - 1;
    for (std::size_t at = from; at < end; ++at)
        if (std::ranges::equal(WordsOfRow(block[at]), words))
            return at;
    for (std::size_t at = from; at < end; ++at)
        if (HoldsInOrder(block[at], words))
            return at;
    return npos;
}

/// The line of a block that became the `wanted`-th line of what it made; npos: none can be told.
/// Blocks keep the order of what they are given.
std::size_t LineInBlock(const Lines& block, const Lines& made, std::size_t wanted)
{
    if (block.empty() || wanted >= made.size())
        return npos;
    std::size_t next = BeginOfContent(block);
    std::size_t found = npos;
    for (std::size_t i = 0; i <= wanted; ++i) {
        found = FindLine(block, WordsOf(made[i]), next);
        next = found == npos ? next : found + 1;
    }
    return found;
}

} // namespace

std::optional<ToldPlace> SourceOfElement(const PageStories& page, std::size_t line,
                                         std::size_t column)
{
    const PageLine& told = page.lines[line];
    const PageStory& story = page.stories[told.story];
    if (story.sources.empty())
        return std::nullopt;
    const ToldPlace& source = story.sources[0];
    const Lines block = LinesOf(story.before);
    std::size_t steps = story.steps.size();
    std::size_t at = BeginOf(TextAfter(story, steps), told.of_story);
    at = at == npos ? npos : at + column - 1;
    for (; steps > 0 && at != npos; --steps) {
        at = PlaceBefore(TextAfter(story, steps - 1), TextAfter(story, steps), at);
        if (at == npos && story.steps[steps - 1].from)
            return story.steps[steps - 1].from;
        if (at == npos)
            break;
    }
    if (at != npos) {
        const auto above = std::ranges::count(std::string_view(story.before).substr(0, at), '\n');
        return LineOf(source, static_cast<std::size_t>(above), block.size());
    }
    const Lines made = LinesOf(TextAfter(story, steps));
    const std::size_t found = LineInBlock(block, made, static_cast<std::size_t>(told.of_story - 1));
    return found == npos ? source : LineOf(source, found, block.size());
}

} // namespace kiv
