#include "builder/at_variables.h"

#include "builder/build_state.h"
#include "builder/mark_search.h"
#include "builder/server_scripts.h"
#include "builder/text_helpers.h"
#include "builder/trace_words.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/table_column.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace kiv {

namespace {

/// The stem of a page's file, which loses its folders by that.
std::string StemOf(Build& build, int page)
{
    return build.CutToStem(build.state.PageTable[page]);
}

std::string PageLink(const Build& build)
{
    return "?d=" + build.pass.ThisDirName +
           "&f=" + build.state.PageTable[build.state.page.number].file +
           "&t=" + SpaceToPct20(build.state.page.CurrentTitle);
}

/// The site's page without its start page: nothing for a page whose file begins with "index".
std::string SiteThis(Build& build)
{
    return IndexRelativeLink(build.CurrentRecord().file);
}

/// The current date and time, "3/5/2004 2:07:09 PM".
std::string DateTimeText(Clock& clock)
{
    const DateTime now = clock.Now();
    const auto two_digits = [](int number) { return (number < 10 ? "0" : "") + Decimal(number); };
    const int hour = now.hour % 12 == 0 ? 12 : now.hour % 12;
    return Decimal(now.month) + "/" + Decimal(now.day) + "/" + Decimal(now.year) + " " +
           Decimal(hour) + ":" + two_digits(now.minute) + ":" + two_digits(now.second) +
           (now.hour < 12 ? " AM" : " PM");
}

constexpr std::string_view kPrintClose =
    R"(<table width="100%" cellspacing="0" cellpadding="0"><tr><td align="right">)"
    R"+(<font face="verdana" size="1"><a href="javascript:this.print()">PRINT</a> | )+"
    R"+(<a href="javascript:this.close()">CLOSE</a></font></td></tr></table>)+";

/// What a value is taken from.
enum class Origin {
    fixed,
    file,     // of this page
    own_name, // of the file that is written
    title_line,
    title,
    var1,
    var2,
    previous,
    following,
    root,
    folder,
    pass,
    day,
    now,
    count,
};

using Value = std::string_view; // of a text that stays until the build goes on

struct AtVariable {
    std::string_view name;
    Value (*value)(Build& build, std::string& store); // `store` is for a value that is made
    Origin origin = Origin::fixed;
};

const PageRecord& Previous(const Build& build)
{
    return build.Record(build.state.page.number - 1);
}

const PageRecord& Following(const Build& build)
{
    return build.Record(build.state.page.number + 1);
}

constexpr std::string_view kStyleTag = R"(<style type="text/css">)";

/// In the format's order: a longer name stands before the shorter one that it begins with, except
/// that "@TITLE" comes before names that merely contain its letters.
constexpr AtVariable kAtVariables[] = {
    {"@VAR1", [](Build& b, std::string&) -> Value { return b.Record(b.state.page.number).var1; },
     Origin::var1},
    {"@VAR2", [](Build& b, std::string&) -> Value { return b.Record(b.state.page.number).var2; },
     Origin::var2},
    {"@PF", [](Build& b, std::string& v) -> Value { return v = PageLink(b); }, Origin::title_line},
    {"@TITLE", [](Build& b, std::string&) -> Value { return b.state.page.CurrentTitle; },
     Origin::title_line},
    {"@ROOT", [](Build& b, std::string&) -> Value { return b.state.SiteRoot; }, Origin::root},
    {"@QTITLE",
     [](Build& b, std::string& v) -> Value { return v = QuoteEscape(b.state.page.CurrentTitle); },
     Origin::title_line},
    {"@STRIPTITLE",
     [](Build& b, std::string& v) -> Value { return v = StripTitle(b.state.page.CurrentTitle); },
     Origin::title_line},
    {"@KEYWORDS",
     [](Build& b, std::string& v) -> Value { return v = TitleKeywords(b.state.page.CurrentTitle); },
     Origin::title_line},
    {"@FILE", [](Build& b, std::string&) -> Value { return b.state.page.CurrentStem; },
     Origin::own_name},
    {"@PREVTITLE", [](Build& b, std::string&) -> Value { return Previous(b).title; },
     Origin::previous},
    {"@NEXTTITLE", [](Build& b, std::string&) -> Value { return Following(b).title; },
     Origin::following},
    {"@PREVNO",
     [](Build& b, std::string& v) -> Value { return v = StemOf(b, b.state.page.number - 1); },
     Origin::previous},
    {"@NEXTNO",
     [](Build& b, std::string& v) -> Value { return v = StemOf(b, b.state.page.number + 1); },
     Origin::following},
    {"@THISTITLE",
     [](Build& b, std::string&) -> Value { return b.Record(b.state.page.number).title; },
     Origin::title},
    {"@THISSTRIP", [](Build& b, std::string&) -> Value { return b.state.page.CurrentBaseStem; },
     Origin::own_name},
    {"@THISDIR", [](Build& b, std::string&) -> Value { return b.pass.ThisDirName; },
     Origin::folder},
    {"@PREV", [](Build& b, std::string&) -> Value { return DropParentPrefix(Previous(b).file); },
     Origin::previous},
    {"@THIS", [](Build& b, std::string&) -> Value { return b.Record(b.state.page.number).file; },
     Origin::file},
    {"@SITETHIS", [](Build& b, std::string& v) -> Value { return v = SiteThis(b); }, Origin::file},
    {"@NEXT", [](Build& b, std::string&) -> Value { return DropParentPrefix(Following(b).file); },
     Origin::following},
    {"@HTMASP", [](Build& b, std::string&) -> Value { return b.pass.OutputExtensionWord; },
     Origin::pass},
    {"@ASPHTM", [](Build& b, std::string&) -> Value { return b.pass.OutputExtensionWord; },
     Origin::pass},
    {"@TODAY", [](Build& b, std::string&) -> Value { return b.pass.TodayText; }, Origin::day},
    {"@DATETIME",
     [](Build& b, std::string& v) -> Value { return v = DateTimeText(b.machine.clock); },
     Origin::now},
    {"@YEAR", [](Build& b, std::string&) -> Value { return b.pass.YearText; }, Origin::day},
    {"@XOFY_X-",
     [](Build& b, std::string& v) -> Value { return v = Decimal(b.state.page.number - 1); },
     Origin::count},
    {"@XOFY_Y-",
     [](Build& b, std::string& v) -> Value { return v = Decimal(b.state.PageCount - 1); },
     Origin::count},
    {"@XOFY_X", [](Build& b, std::string& v) -> Value { return v = Decimal(b.state.page.number); },
     Origin::count},
    {"@XOFY_Y", [](Build& b, std::string& v) -> Value { return v = Decimal(b.state.PageCount); },
     Origin::count},
    {"@font",
     [](Build&, std::string&) -> Value {
         return R"(<font face="geneva,arial,helvetica,helv" size="2">)";
     }},
    {"<style>", [](Build&, std::string&) { return kStyleTag; }},
    {"@printclose", [](Build&, std::string&) { return kPrintClose; }},
    {"@vfont",
     [](Build&, std::string&) -> Value {
         return R"(<font face="verdana,geneva,arial,helvetica,helv" size="1">)";
     }},
};

constexpr std::size_t kRows = std::size(kAtVariables);
using RowSet = std::uint64_t;
static_assert(kRows <= 64);

constexpr RowSet Row(std::size_t row)
{
    return RowSet{1} << row;
}

constexpr std::size_t kLongestName = [] {
    std::size_t longest = 0;
    for (const AtVariable& variable : kAtVariables)
        longest = std::max(longest, variable.name.size());
    return longest;
}();

// The rows that change a page's record, which the values of others are taken from.
constexpr std::size_t kCuttingRows[] = {11, 12};
static_assert(kAtVariables[kCuttingRows[0]].name == "@PREVNO");
static_assert(kAtVariables[kCuttingRows[1]].name == "@NEXTNO");

constexpr std::size_t kStyleRow = 30;
static_assert(kAtVariables[kStyleRow].name == "<style>");

/// The rows by place and character: those whose name has this character there, in any case, and
/// those whose name is shorter.
using RowsOfPlace = std::array<RowSet, 256>;

constexpr std::array<RowsOfPlace, kLongestName> kRowsAt = [] {
    std::array<RowsOfPlace, kLongestName> rows{};
    for (std::size_t place = 0; place < kLongestName; ++place)
        for (std::size_t row = 0; row < kRows; ++row) {
            const std::string_view name = kAtVariables[row].name;
            if (place >= name.size()) {
                for (RowSet& any : rows[place])
                    any |= Row(row);
                continue;
            }
            const auto upper = static_cast<unsigned char>(AsciiUpper(name[place]));
            const bool is_letter = upper >= 'A' && upper <= 'Z';
            rows[place][upper] |= Row(row);
            rows[place][is_letter ? std::size_t{upper} + ('a' - 'A') : upper] |= Row(row);
        }
    return rows;
}();

constexpr std::size_t kLook = 1000; // what NamesIn costs for a character

/// Where a value comes from, for the trace.
struct Told {
    std::string words;
    SourceSpan from;
};

Told ToldField(Tracer& tracer, int page, PageField field, std::string_view otherwise)
{
    const SourceSpan& place = tracer.Known().Field(page, field).place;
    return {place.file.empty() ? std::string(otherwise) : tracer.PlaceText(place), place};
}

Told ToldPage(Tracer& tracer, int page)
{
    return {tracer.PageText(page), tracer.Known().Field(page, PageField::file).place};
}

/// What the second line of the page gives.
Told ToldTitleLine(const Build& build, const Tracer& tracer)
{
    if (build.pass.SinglePageMode)
        return {"a single page has no title of its own", {}};
    const SourceLine& second = build.state.PageLines[build.state.page.number][2];
    if (second.line == 0)
        return {"the page has no second line", {}};
    const SourceSpan place{second.file, second.line, second.line};
    return {tracer.PlaceText(place), place};
}

Told ToldOrigin(Build& build, Tracer& tracer, Origin origin)
{
    const int page = build.state.page.number;
    switch (origin) {
    case Origin::fixed:
        return {"the same on every page", {}};
    case Origin::own_name:
        if (build.pass.SinglePageMode)
            return {"a single page has no name of its own", {}};
        [[fallthrough]];
    case Origin::file:
        return ToldField(tracer, page, PageField::file, "this page's file");
    case Origin::title_line:
        return ToldTitleLine(build, tracer);
    case Origin::title:
        return ToldField(tracer, page, PageField::title, "the page has no title");
    case Origin::var1:
        return ToldField(tracer, page, PageField::var1, "the page has no @VAR1");
    case Origin::var2:
        return ToldField(tracer, page, PageField::var2, "the page has no @VAR2");
    case Origin::previous:
        return ToldPage(tracer, page - 1);
    case Origin::following:
        return ToldPage(tracer, page + 1);
    case Origin::root:
        return ToldField(tracer, 0, PageField::root, "the page list has no @ROOT");
    case Origin::folder:
        return {"the name of the site's folder", {}};
    case Origin::pass:
        return {ThisPassWords(build), {}};
    case Origin::day:
        return {"the day of this run", {}};
    case Origin::now:
        return {"the time of this step", {}};
    case Origin::count:
        return {Joined({"page ", Decimal(page), " of ", Decimal(build.state.PageCount)}), {}};
    }
    return {};
}

void NoteVariable(MergedLine& line, const AtVariable& variable, std::string_view value)
{
    if (line.tracer == nullptr)
        return;
    Told told = ToldOrigin(line.build, *line.tracer, variable.origin);
    line.tracer->Note(variable.name, Joined({Shortened(value), ", ", told.words}), line.text,
                      told.from);
}

/// The rows whose name stands in a line.
struct NamesFound {
    RowSet rows = 0;
    RowSet again = 0; // of these: those that may stand there more than once
};

/// The rows whose name `text` begins with; `text` begins with "@".
RowSet RowsOf(std::string_view text)
{
    RowSet rows = kRowsAt[0]['@'];
    for (std::size_t place = 1; place < kLongestName && rows != 0; ++place) {
        const char next = place < text.size() ? text[place] : '\0';
        rows &= kRowsAt[place][static_cast<unsigned char>(next)];
    }
    return rows;
}

/// "<style>" is looked for only where it may stand, and no row before `first`.
NamesFound NamesIn(std::string_view line, std::size_t first, bool may_hold_style)
{
    NamesFound found;
    for (std::size_t at = line.find('@'); at != npos; at = line.find('@', at + 1)) {
        const RowSet rows = RowsOf(line.substr(at));
        found.again |= found.rows & rows;
        found.rows |= rows;
    }
    if (may_hold_style && first <= kStyleRow &&
        ContainsNoCase(line, kAtVariables[kStyleRow].name)) {
        found.rows |= Row(kStyleRow);
        found.again |= Row(kStyleRow);
    }
    found.rows &= ~(Row(first) - 1);
    return found;
}

/// Whether `value`, put right behind `before`, may bring a name into the line: one that it holds,
/// or one that it completes.
bool MayBringNames(std::string_view before, std::string_view value)
{
    if (value.find('@') != npos || value.find('<') != npos)
        return true;
    before.remove_prefix(before.size() - std::min(before.size(), kLongestName - 1));
    const std::size_t tag = before.rfind('<');
    return before.find('@') != npos ||
           (tag != npos && StartsWithNoCase(kAtVariables[kStyleRow].name, before.substr(tag)));
}

[[noreturn]] void ThrowTooLong(std::string_view name)
{
    throw RunError(ErrorKind::overflow,
                   "the values of " + std::string(name) + " and others make the line too long", {},
                   "Look at the value of " + std::string(name) +
                       ": it must not hold a variable that holds it again.");
}

void PutEverywhere(MergedLine& line, std::string_view name, std::string_view value)
{
    const std::size_t added = CountNoCase(line.text, name) * value.size();
    if (line.text.size() + added > line.bound.Longest())
        ThrowTooLong(name);
    ReplaceEachNoCase(line.text, name, value);
}

} // namespace

std::vector<std::string_view> AtVariableNames()
{
    return ColumnOf(kAtVariables, &AtVariable::name);
}

bool ReplaceAtVariables(MergedLine& line)
{
    std::string& text = line.text;
    NamesFound present = NamesIn(text, 0, (line.triggers & kStyle) != 0);
    const bool found = present.rows != 0;
    while (present.rows != 0) {
        const auto row = static_cast<std::size_t>(std::countr_zero(present.rows));
        present.rows &= present.rows - 1;
        const std::string_view name = kAtVariables[row].name;
        const std::size_t at = FindNoCase(text, name);
        if (at == npos) // it was the head of a longer name
            continue;
        const Value value = kAtVariables[row].value(line.build, line.store);
        line.bound.AddSource(value.size());
        bool brings_names = true;
        if ((present.again & Row(row)) != 0 && FindNoCase(text, name, at + name.size()) != npos) {
            PutEverywhere(line, name, value);
        } else {
            brings_names = MayBringNames(std::string_view(text).substr(0, at), value);
            text.replace(at, name.size(), value);
        }
        NoteVariable(line, kAtVariables[row], value);
        if (!brings_names)
            continue;
        if (!line.bound.Spend(kLook * text.size()))
            ThrowTooLong(name);
        present = NamesIn(text, row + 1, true);
    }
    return found;
}

namespace {

/// Whether a text ends in the beginning of a tag that is acted on.
bool EndsInTag(std::string_view text)
{
    const std::size_t tag = text.rfind('<');
    if (tag == npos)
        return false;
    const std::string_view end = text.substr(tag);
    return StartsWithNoCase("<style>", end) || StartsWithNoCase("<option value=", end);
}

/// Puts what is the same on each page: the values of "@@1" and its kin, and the tag for "<style>".
/// Returns false when one of them holds or makes a mark.
bool PutFixed(std::string& line, const VariableSlots& slots)
{
    for (int digit = 1; digit <= 9; ++digit) {
        const NumberedMark mark(Family::at, digit);
        if (Contains(line, mark.View()) && HoldsLateMark(slots[digit]))
            return false;
        ReplaceEach(line, mark.View(), slots[digit]);
    }
    ReplaceEachNoCase(line, kAtVariables[kStyleRow].name, kStyleTag);
    return (ScanLine(line) & kMerged & ~(kAt | kMeta | kDirective)) == 0;
}

} // namespace

CutLine::CutLine(std::string_view line, const BuildState& state)
{
    Triggers taken = kAt | kAtNumber | kStyle | kMeta;
    if (!IsServerScript(line))
        taken |= kDirective;
    std::string text(line);
    const bool is_cut = (ScanLine(line) & kMerged & ~taken) == 0 &&
                        PutFixed(text, state.NumberedVariables[Family::at]) && Cut(text);
    if (!is_cut)
        *this = CutLine();
}

/// A line without names may hold any mark that no step acts on.
bool CutLine::Cut(std::string_view line)
{
    if (NamesIn(line, 0, false).rows == 0) {
        text_ = line;
        return !text_.empty();
    }
    RowSet found = 0;
    for (std::size_t at = line.find('@'); at != npos; at = line.find('@')) {
        const RowSet rows = RowsOf(line.substr(at));
        const auto row = static_cast<std::size_t>(std::countr_zero(rows));
        if (rows == 0 || (found & Row(row)) != 0 || std::ranges::count(kCuttingRows, row) != 0 ||
            !AddPiece(line.substr(0, at)) || EndsInTag(text_))
            return false;
        found |= Row(row);
        names_.push_back({text_.size(), row});
        line.remove_prefix(at + kAtVariables[row].name.size());
    }
    return AddPiece(line) && !text_.empty();
}

/// With a mark's beginning in the text, a value might make a mark of it.
bool CutLine::AddPiece(std::string_view text)
{
    text_ += text;
    return text.find_first_of("!{}") == npos;
}

bool CutLine::Write(Build& build, std::string& store, std::string& output) const
{
    constexpr std::size_t kLong = 100'000;
    const std::size_t begin = output.size();
    std::size_t done = 0;
    for (const Name& name : names_) {
        const Value value = kAtVariables[name.row].value(build, store);
        if (value.size() > kLong || HoldsLateMark(value)) {
            output.resize(begin);
            return false;
        }
        output.append(text_.data() + done, name.at - done).append(value);
        done = name.at;
    }
    output.append(text_.data() + done, text_.size() - done).append(kCrLf);
    return true;
}

} // namespace kiv
