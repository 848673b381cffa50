// At-variables and macros with a name that are none.
#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "inspect/directive_slips.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/word_slips.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"

#include <algorithm>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kShortest = 4; // letters of a word that may be taken for another
constexpr std::size_t kLeastTail = 3;

bool HasSameLetters(std::string_view one, std::string_view other)
{
    return std::ranges::is_permutation(one, other, {}, AsciiUpper, AsciiUpper);
}

/// Names are written in capitals, and a handle, a rule of a style sheet or a mark in a program
/// mostly is not. Of a short word all letters must be there: "@TEXT" is not "@NEXT".
bool IsLikely(std::string_view word, std::string_view meant)
{
    const bool has_same_letters = HasSameLetters(word, meant);
    if (!IsUpperCase(word))
        return has_same_letters && word.size() > kShortest;
    return has_same_letters || word.size() != meant.size() || word.size() > kShortest;
}

class Variables {
  public:
    Variables()
    {
        for (const std::string_view name : AtVariableNames())
            if (name.starts_with('@'))
                words_.push_back(name.substr(1));
    }

    /// The name that `word` was meant for, without its "@"; "": it is a name, or no slip.
    std::string_view Meant(std::string_view word) const
    {
        std::string_view taken; // what the build takes of it
        for (const std::string_view name : words_)
            if (StartsWithNoCase(word, name) && name.size() > taken.size())
                taken = name;
        if (!taken.empty() && word.size() < taken.size() + kLeastTail)
            return {};
        const std::string_view meant = SlipOf(word, words_, kShortest);
        if (meant.empty() || !IsLikely(word, meant))
            return {};
        // "@THISTITEL" becomes the page's file and "TITEL", "@FILES" is meant as it is.
        return taken.empty() || meant.size() > taken.size() ? meant : std::string_view();
    }

  private:
    std::vector<std::string_view> words_;
};

/// Whether an "@" with these characters before it belongs to a mail address or a number's mark.
/// Names of files are put together with "_", "-" and ".".
bool JoinsOn(std::string_view before)
{
    constexpr std::string_view kOfFileNames = "_-.";
    return !before.empty() && kOfFileNames.find(before.back()) == npos &&
           (IsWordCharacter(before.back()) || before.back() == '@' || before.back() == '+');
}

void LookAt(std::string_view line, const Place& place, const Variables& variables,
            FindingSink& sink)
{
    for (std::size_t at = line.find('@'); at != npos; at = line.find('@', at + 1)) {
        const std::string_view word = HeadWord(line.substr(at + 1));
        const std::string_view meant = variables.Meant(word);
        if (!meant.empty() && !JoinsOn(line.substr(0, at)))
            sink.Add(place, Joined({"\"@", word, "\" is not an at-variable"}),
                     DidYouMean(Joined({"@", meant})));
    }
}

std::vector<std::string_view> MacroNames()
{
    std::vector<std::string_view> names;
    for (const Bang* const bang : kBangs)
        names.push_back(bang->Name().substr(2));
    return names;
}

void LookForMacros(std::string_view line, const Place& place, FindingSink& sink)
{
    const std::vector<std::string_view> names = MacroNames();
    for (std::size_t at = line.find("!!"); at != npos; at = line.find("!!", at + 2)) {
        const std::string_view word = HeadWord(line.substr(at + 2));
        const std::string_view behind = FirstChars(line.substr(at + 2 + word.size()), 1);
        const bool is_known = std::ranges::any_of(
            names, [&](std::string_view name) { return EqualsNoCase(name, word); });
        std::string_view meant;
        if (behind == "[")
            meant = SlipOf(word, names, 2);
        else if (behind == "(" && is_known)
            meant = word;
        if (!meant.empty())
            sink.Add(place, Joined({"\"!!", word, behind, "\" is not a macro"}),
                     DidYouMean(Joined({"!!", meant, "["})));
    }
}

/// "!1[a|b]", where the list defines the macro "!!1".
void LookForHalfMarks(const SiteView& site, std::string_view line, const Place& place,
                      FindingSink& sink)
{
    for (std::size_t at = line.find('!'); at != npos; at = line.find('!', at + 1)) {
        const std::string_view rest = line.substr(at);
        const bool is_use = rest.size() > 2 && rest[1] >= '1' && rest[1] <= '9' && rest[2] == '[' &&
                            Contains(rest, "]");
        if (!is_use || (at > 0 && (line[at - 1] == '!' || line[at - 1] == '?')))
            continue;
        const std::string meant = Joined({"!", rest.substr(0, 2)});
        if (std::ranges::find(site.definitions, meant, &NumberDefinition::mark) !=
            site.definitions.end())
            sink.Add(place, Joined({"\"", rest.substr(0, 3), "\" is not a macro"}),
                     DidYouMean(Joined({meant, "["})));
    }
}

/// Whether words of the line come to a page: as text, in a title or in a definition.
bool ComesToPages(const LineParts& parts)
{
    return parts.HasRole() || parts.Has(LinePart::title) || parts.Has(LinePart::body) ||
           parts.Has(LinePart::frame);
}

/// Calls `look(line, place)` for every line that may come to a page, but for those that were meant
/// for a directive, which are told as a whole.
template <typename Look>
void ForEachLine(const SiteView& site, Look look)
{
    for (const SourceText& source : site.sources) {
        const std::vector<DirectiveSlip> slips = DirectiveSlips(site, source);
        auto slip = slips.begin();
        for (std::size_t index = 0; index < source.lines.size(); ++index) {
            const int line = static_cast<int>(index) + 1;
            const bool is_slip = slip != slips.end() && slip->line == line;
            if (is_slip)
                ++slip;
            else if (ComesToPages(source.PartsOf(index)))
                look(source.lines[index], site.PlaceOf(source, line));
        }
    }
}

} // namespace

void FindMisspelledVariables(const SiteView& site, FindingSink& sink)
{
    const Variables variables;
    ForEachLine(site, [&](std::string_view line, const Place& place) {
        LookAt(line, place, variables, sink);
    });
}

void FindMisspelledMacros(const SiteView& site, FindingSink& sink)
{
    ForEachLine(site, [&](std::string_view line, const Place& place) {
        LookForMacros(line, place, sink);
        // In a definition "!1" stands for a field.
        if (line.size() < 5 || line[4] != '=')
            LookForHalfMarks(site, line, place, sink);
    });
}

} // namespace kiv
