#include "builder/cross_references.h"

#include "builder/build_state.h"
#include "builder/merge_steps.h"
#include "builder/trace_words.h"
#include "builder/tracer.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

namespace {

Fields FilledFields(const BracketUse& use)
{
    Fields fields(use);
    fields.FillEmpty("&nbsp;");
    return fields;
}

/// The greatest number up to `limit` that stands behind a "!" in `text`, 0 when there is none.
std::size_t GreatestPlaceholder(std::string_view text, std::size_t limit)
{
    std::size_t greatest = 0;
    if (limit == 0)
        return 0;
    for (std::size_t at = text.find('!'); at != npos; at = text.find('!', at + 1)) {
        std::size_t number = 0;
        for (const char c : text.substr(at + 1)) {
            // No placeholder begins with "0"; "!12" holds "!1" and "!12".
            if (c < '0' || c > '9' || (c == '0' && number == 0))
                break;
            number = number * 10 + static_cast<std::size_t>(c - '0');
            if (number > limit)
                break;
            greatest = std::max(greatest, number);
        }
    }
    return greatest;
}

/// Whether a "!2" to "!10" stands in `text`. The loop has no branch, so that it takes many
/// characters at once: a use in a use in a use is looked through again and again.
bool HoldsPlaceholderPast1(std::string_view text)
{
    const std::string_view padded =
        text.substr(0, text.size() - std::min<std::size_t>(2, text.size()));
    unsigned char found = 0;
    for (std::size_t i = 0; i < padded.size(); ++i) {
        const unsigned char mark = text[i] == '!';
        const unsigned char from_2 = static_cast<unsigned char>(text[i + 1] - '2') <= '9' - '2';
        const unsigned char one = text[i + 1] == '1';
        const unsigned char zero = text[i + 2] == '0';
        found |= mark & (from_2 | (one & zero));
    }
    const std::string_view end = LastChars(text, 2); // too short for the loop
    return found != 0 || (end.size() == 2 && end[0] == '!' && end[1] >= '2' && end[1] <= '9');
}

/// Puts one field for its placeholder, "!" and `number`, wherever that stands in `text`. Stops when
/// the result is longer than `longest`.
std::string WithField(std::string_view text, std::string_view number, std::string_view field,
                      std::size_t longest)
{
    std::string filled;
    filled.reserve(text.size() + field.size());
    std::size_t done = 0;
    for (std::size_t at = text.find('!'); at != npos && filled.size() <= longest;
         at = text.find('!', at)) {
        ++at;
        if (!text.substr(at).starts_with(number))
            continue;
        filled.append(text, done, at - 1 - done).append(field);
        at += number.size();
        done = at;
    }
    filled.append(text, done); // what append gives back would be copied
    return filled;
}

constexpr std::size_t kMarkLook = 220; // the work for each character of a text that is full of "!"

[[noreturn]] void ThrowGrown(std::string_view name)
{
    throw RunError(ErrorKind::overflow,
                   "the fields of " + std::string(name) + " grow the line without end", {},
                   "Look at the fields of this " + std::string(name) +
                       ": one of them holds the mark of another, such as \"!2\".");
}

/// Puts the fields into a template, the last one first so that "!10" comes before "!1". Each goes
/// over the whole text as it then stands, so a placeholder inside a field is filled as well.
/// Placeholders that do not occur cost nothing. Fields that double each other must not eat the
/// memory: growth has a bound far above any real page.
std::string Filled(std::string_view pattern, const Fields& fields, std::size_t line_size,
                   LineBound& bound)
{
    const std::size_t longest = 10'000'000 + 100 * line_size;
    std::size_t k = GreatestPlaceholder(pattern, fields.Count());
    if (k == 0)
        return std::string(pattern);
    std::string text;
    for (std::string_view former = pattern; k > 0; k = GreatestPlaceholder(text, k - 1)) {
        const std::size_t size = former.size();
        text = WithField(former, std::to_string(k), fields[k], longest);
        former = text;
        const std::size_t looked_at = size + (k > 1 ? text.size() : 0);
        if (text.size() > longest || !bound.Spend(text.size() + kMarkLook * looked_at))
            ThrowGrown(fields.Owner());
    }
    return text;
}

// What the trace tells of a use, behind the name of its definition.
constexpr const char* kVanishes = ", so the use vanishes";
constexpr const char* kLineGoes = ", so the whole line goes";
constexpr const char* kGroupTold[] = {
    ": it is this page of this group, so the first part",
    ": another page of this group, so the second part",
    ": another group, so the third part",
};

constexpr const char* kPageTold[] = {
    ": it is this page, so the first half",
    ": another page, so the second half",
};

/// What `words()` gives, where anybody asks for it.
template <typename Words>
std::string IfTraced(const MergedLine& line, Words words)
{
    return line.tracer == nullptr ? std::string() : words();
}

/// ` (_html.txt:5)`, where a page's directive stands.
std::string BesidePlace(const MergedLine& line, PageField field)
{
    Tracer& tracer = *line.tracer;
    const SourceSpan& place = tracer.Known().Field(line.build.state.page.number, field).place;
    return place.file.empty() ? "" : Joined({" (", tracer.PlaceText(place), ")"});
}

/// What a name of a page is held against, when it is an id.
std::string IdWords(const MergedLine& line, std::string_view name)
{
    if (!StartsWithNoCase(name, kIdMark))
        return {};
    const std::string& id = line.build.CurrentRecord().id;
    return id.empty()
               ? "; the page has no id"
               : Joined({"; the page's id is ", Quoted(id), BesidePlace(line, PageField::id)});
}

std::string GroupWords(const MergedLine& line, const std::string& stem)
{
    const std::string& group = line.build.CurrentRecord().group;
    return group.empty() ? Joined({"; the page has no @GROUP, so its group is ", Quoted(stem)})
                         : Joined({"; the page's group is ", Quoted(group),
                                   BesidePlace(line, PageField::group)});
}

/// Whether a field is "ID:" and the page's id; without "ID:" the answer is left to `is_name`.
template <typename IsName>
bool NamesPage(std::string_view field, const PageRecord& page, IsName is_name)
{
    if (StartsWithNoCase(field, kIdMark))
        return FromChar(field, 4) == page.id;
    return is_name(field);
}

/// Which third of a group definition a use takes: 0 for group and page, 1 for the group alone, 2
/// for neither.
std::size_t GroupCase(const Fields& fields, const PageRecord& page, const std::string& stem)
{
    std::string_view wanted = fields[1];
    const std::string_view name = fields[2]; // a use without it is wrong whatever its group
    const std::string_view group = page.group.empty() ? stem : page.group;
    const bool star = wanted.ends_with('*');
    if (star)
        wanted.remove_suffix(1);
    if (star ? !group.starts_with(wanted) : group != wanted)
        return 2;
    const bool named = NamesPage(name, page, [&](std::string_view field) {
        // Only behind a star may the page carry its extension. The format wants it so.
        return field == stem || (star && (field == stem + ".asp" || field == stem + ".htm" ||
                                          field == stem + ".html"));
    });
    return named ? 0 : 1;
}

} // namespace

Expansion ExpandNumbered(const BracketUse& use, std::string_view definition, MergedLine& line)
{
    std::string filled = Filled(definition, FilledFields(use), use.LineSize(), line.bound);
    // Placeholders without a field go, but a "!1" stays. The format wants it so.
    if (HoldsPlaceholderPast1(filled)) {
        if (!line.bound.Spend(9 * kMarkLook * filled.size()))
            ThrowGrown(use.name);
        for (int k = 2; k <= 10; ++k)
            ReplaceEach(filled, "!" + Decimal(k), "");
    }
    return {std::move(filled), false, IfTraced(line, [&] {
                return definition.empty() ? std::string(kVanishes) : ", " + FilledWords(use);
            })};
}

Expansion ExpandPageRef(const BracketUse& use, std::string_view definition, MergedLine& line)
{
    Build& build = line.build;
    const Fields fields = FilledFields(use);
    if (definition.empty()) {
        build.messages.ShowBuildMessage(std::string(kNoPageRefWarning) + use.Line());
        return {"", true, IfTraced(line, [] { return kLineGoes; })};
    }
    const std::size_t bar = definition.find('|');
    if (bar == npos)
        throw RunError(
            ErrorKind::invalid_argument,
            "the definition of " + std::string(use.name) + " has no \"|\" between its halves", {},
            "Define it in the page list as \"" + std::string(use.name) +
                " = on this page|on any other\".");
    // The folder goes first, so a field with a folder never names the page. The format wants it so.
    PageRecord& page = build.CurrentRecord();
    const std::string stem = build.CutToStem(page);
    const bool named = NamesPage(fields[1], page, [&](std::string_view field) {
        return field == stem || field == page.file;
    });
    const std::string_view half = named ? definition.substr(0, bar) : definition.substr(bar + 1);
    return {Filled(half, fields, use.LineSize(), line.bound), false,
            IfTraced(line, [&] { return kPageTold[named ? 0 : 1] + IdWords(line, fields[1]); })};
}

Expansion ExpandGroupRef(const BracketUse& use, std::string_view definition, MergedLine& line)
{
    Build& build = line.build;
    const Fields fields = FilledFields(use);
    if (definition.empty()) {
        build.messages.ShowBuildMessage(std::string(kNoGroupRefWarning));
        return {"", true, IfTraced(line, [] { return kLineGoes; })};
    }
    const std::vector<std::string_view> halves = Split(definition, '|');
    if (halves.size() < 3)
        throw RunError(ErrorKind::subscript,
                       "the definition of " + std::string(use.name) +
                           " needs three parts with \"|\" between them",
                       {},
                       "Define it in the page list as \"" + std::string(use.name) +
                           " = on this page|in its group|anywhere else\".");
    PageRecord& page = build.CurrentRecord();
    const std::string stem = build.CutToStem(page);
    const std::size_t part = GroupCase(fields, page, stem);
    return {Filled(halves[part], fields, use.LineSize(), line.bound), false, IfTraced(line, [&] {
                return kGroupTold[part] + GroupWords(line, stem) +
                       (part == 2 ? std::string() : IdWords(line, fields[2]));
            })};
}

} // namespace kiv
