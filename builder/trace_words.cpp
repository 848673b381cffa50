#include "builder/trace_words.h"

#include "builder/arguments.h"
#include "builder/build_state.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <array>

namespace kiv {

namespace {

constexpr std::size_t kMostShown = 60;

/// In the order of Family.
constexpr std::array<std::string_view, 7> kFamilyWords = {
    "variable", "page reference", "variable", "macro", "wrapper", "group reference", "macro"};

std::string_view WordOf(Family family)
{
    return kFamilyWords[static_cast<std::size_t>(family)];
}

std::string MarkOf(Family family, int slot)
{
    const std::string mark(NumberedMark(family, slot).View());
    const bool has_bracket =
        family != Family::at && family != Family::percent && family != Family::wrapper;
    return has_bracket ? mark + "[" : mark;
}

struct PositionWord {
    char code;
    std::string_view when_kept;
    std::string_view when_not;
};

constexpr PositionWord kPositions[] = {
    {'1', "is the first", "is not the first"},
    {'2', "is not the first", "is the first"},
    {'5', "is neither the first nor the last", "is the first or the last"},
    {'8', "is not the last", "is the last"},
    {'9', "is the last", "is not the last"},
};

std::string_view FieldPhrase(PageField field)
{
    switch (field) {
    case PageField::file:
        return "begins a page and names its file";
    case PageField::title:
        return "gives the page its title";
    case PageField::mode:
        return "says how the page is framed";
    case PageField::keywords:
        return "gives the page its keywords";
    case PageField::description:
        return "gives the page its description";
    case PageField::id:
        return "gives the page its id";
    case PageField::group:
        return "puts the page into a group";
    case PageField::var1:
    case PageField::var2:
        return "gives the page a value of its own";
    case PageField::noindex:
        return "keeps the page out of the lists";
    case PageField::root:
        return "gives the site its root";
    }
    return {};
}

} // namespace

std::string Shortened(std::string_view value)
{
    if (value.empty())
        return "nothing";
    std::string shown(value.substr(0, value.find_first_of("\r\n")));
    if (shown.size() > kMostShown)
        shown.resize(kMostShown);
    return shown.size() < value.size() ? shown + "..." : shown;
}

std::string Quoted(std::string_view text)
{
    return text.empty() ? "\"\"" : Joined({"\"", Shortened(text), "\""});
}

std::string NumberWords(Family family, int slot)
{
    return Joined({WordOf(family), " ", Decimal(slot), ", ", MarkOf(family, slot)});
}

std::string DefinitionWords(Family family, int slot)
{
    return "defines " + NumberWords(family, slot);
}

std::string FieldWords(PageField field, std::string_view word)
{
    return Joined({Trim(Before(word, '=')), " ", FieldPhrase(field)});
}

std::string VariableWords(Tracer& tracer, Family family, int digit)
{
    const Definition& definition = tracer.Known().Variable(family, digit);
    const std::string name = Joined({WordOf(family), " ", Decimal(digit)});
    if (definition.place.file.empty())
        return Joined({"the page list defines no ", name});
    return Joined({name, " of ", tracer.PlaceText(definition.place)});
}

std::string FilledWords(const BracketUse& use)
{
    std::string words = "filled with ";
    const Fields fields(use);
    if (fields.Count() == 0)
        return "filled with nothing";
    for (std::size_t n = 1; n <= fields.Count() && n <= 10; ++n)
        Append(words, {n > 1 ? ", " : "", Quoted(fields[n])});
    return words;
}

std::string PositionWords(char code, bool keep, int page, int pages)
{
    std::string words =
        Joined({keep ? "kept" : "left out", ", page ", Decimal(page), " of ", Decimal(pages), " "});
    for (const PositionWord& position : kPositions)
        if (position.code == code)
            words += keep ? position.when_kept : position.when_not;
    return words;
}

std::string ThisPassWords(const Build& build)
{
    const PassState& pass = build.pass;
    return Joined({"this is the ", pass.AspPass   ? "pass for ASP"
                                   : pass.HtmPass ? "pass for HTM"
                                                  : "ordinary pass"});
}

std::string PassWords(const Build& build, bool keep)
{
    return Joined({keep ? "kept" : "left out", ", ", ThisPassWords(build)});
}

} // namespace kiv
