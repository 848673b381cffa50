// What is wrong on a page itself: names given twice, constructs that nobody expanded.
#include "blocks/dispatcher.h"
#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/page_record.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_links.h"
#include "inspect/word_slips.h"
#include "platform/drive_path.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>
#include <vector>

namespace kiv {

void FindUnreadPages(const SiteView& site, FindingSink& sink)
{
    if (!CanReadPages()) {
        if (site.group.empty() || site.group.front() == &site)
            sink.Add({}, "this kiv was built without a reader of HTML: it has not looked at what "
                         "the pages say");
        return;
    }
    ForEachPage(site, [&](const LinkedPage& page) {
        if (!page.facts.is_read)
            sink.Add(Place{page.path, 0, page.text->name},
                     "the page is nested too deeply, or is too large, to be looked at");
    });
}

void FindIdsTwice(const SiteView& site, FindingSink& sink)
{
    ForEachPage(site, [&](const LinkedPage& page) {
        if (page.facts.is_made_by_server)
            return; // which may leave one of them out
        std::map<std::string_view, int> lines;
        for (const PageWord& id : page.facts.ids) {
            const auto [first, is_new] = lines.try_emplace(id.text, id.line);
            if (is_new)
                continue;
            const Place before = site.PlaceOf(*page.text, first->second, id.text);
            sink.Add(site.PlaceOf(*page.text, id.line, id.text),
                     Joined({"the id ", InQuotes(id.text), " is given twice; first in ",
                             NameOf(before.file), ", line ", Decimal(before.line)}),
                     "choose another name for one of them");
        }
    });
}

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// How long the use of a macro, reference or variable is that begins here; 0: none does.
std::size_t NumberedUse(std::string_view rest)
{
    if (rest.size() < 3 || std::ranges::find(kFamilyMark, rest.substr(0, 2)) == kFamilyMark.end() ||
        !IsDigit(rest[2]))
        return 0;
    const char next = rest.size() > 3 ? rest[3] : ' ';
    if (rest[0] == '[')
        return next == ' ' || next == '\r' ? 3 : 0; // "[[1]]" is a footnote
    if (rest[0] == '@' || rest[0] == '%')
        return IsWordCharacter(next) ? 0 : 3;
    return next == '[' ? 4 : 0;
}

std::size_t BangUse(std::string_view rest)
{
    if (rest.starts_with("!!"))
        for (const Bang* const bang : kBangs)
            if (StartsWithNoCase(rest, bang->mark))
                return bang->mark.size();
    return 0;
}

bool HaveSameLetters(std::string one, std::string other)
{
    std::ranges::sort(one);
    std::ranges::sort(other);
    return one == other;
}

/// The at-variable that a word in capitals was meant for. A short word with another letter may be
/// anything.
std::string_view MeantVariable(std::string_view word)
{
    for (const std::string_view name : AtVariableNames())
        if (HaveSameLetters(std::string(word), std::string(name)) ||
            (word.size() >= 6 && EditDistance(word, name) == 1))
            return name;
    return {};
}

/// "@TITEL"; not what a directive's line begins with, which is another finding.
std::size_t AtWord(std::string_view rest, char before)
{
    if (rest[0] != '@' || IsWordCharacter(before) || before == '@' || before == '.' ||
        before == '-')
        return 0;
    std::size_t size = 1;
    while (size < rest.size() && IsWordCharacter(rest[size]))
        ++size;
    const std::string_view word = rest.substr(0, size);
    const bool is_capital = std::ranges::none_of(word, [](char c) { return c >= 'a' && c <= 'z'; });
    const std::string_view behind = Trim(rest.substr(size));
    if (!is_capital || size < 4 || behind.starts_with('=') || MeantVariable(word).empty())
        return 0;
    return size;
}

/// "  @@EOY": a switch that does not begin its line. Where it stands among words, they speak of it.
bool IsSwitch(std::string_view line)
{
    constexpr std::string_view kSwitches[] = {"@@EOY", "@@stop", "@@start"};
    return std::ranges::any_of(kSwitches,
                               [&](std::string_view word) { return EqualsNoCase(line, word); });
}

std::size_t ConstructAt(std::string_view rest, char before)
{
    for (const std::size_t size : {NumberedUse(rest), BangUse(rest), AtWord(rest, before)})
        if (size > 0)
            return size;
    return 0;
}

void AddLeftOver(const LinkedPage& page, int line, std::string_view construct, FindingSink& sink)
{
    const std::string_view meant =
        construct[0] == '@' ? MeantVariable(construct) : std::string_view();
    sink.Add(page.view->PlaceOf(*page.text, line, construct),
             Joined({"visitors read ", InQuotes(construct), ", which looks like a construct"}),
             DidYouMean(meant == construct ? std::string_view() : meant));
}

void LookForConstructs(const LinkedPage& page, const PageWord& text, FindingSink& sink)
{
    const std::string_view line = text.text;
    if (IsSwitch(Trim(line)))
        return AddLeftOver(page, text.line, Trim(line), sink);
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t size = ConstructAt(line.substr(at), at == 0 ? ' ' : line[at - 1]);
        if (size > 0)
            AddLeftOver(page, text.line, line.substr(at, size), sink);
        at += std::max<std::size_t>(size, 1);
    }
}

/// One that is misspelled is a matter of the source.
bool IsBlockTag(std::string_view tag)
{
    const std::vector<std::string_view> words = BlockTagWords();
    return tag.starts_with("<zu") && std::ranges::find(words, LowerCase(tag)) != words.end();
}

} // namespace

void FindLeftOvers(const SiteView& site, FindingSink& sink)
{
    ForEachPage(site, [&](const LinkedPage& page) {
        for (const PageWord& text : page.facts.texts)
            if (!page.text->IsAsItIs(text.line))
                LookForConstructs(page, text, sink);
        for (const PageWord& tag : page.facts.tags)
            if (IsBlockTag(tag.text) && !page.text->IsAsItIs(tag.line))
                sink.Add(site.PlaceOf(*page.text, tag.line, tag.text),
                         Joined({"the tag ", InQuotes(tag.text), " is left on the page"}));
    });
}

} // namespace kiv
