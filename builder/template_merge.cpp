#include "builder/template_merge.h"

#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/build_state.h"
#include "builder/cross_references.h"
#include "builder/expansion_loop.h"
#include "builder/navigation_lists.h"
#include "builder/server_scripts.h"
#include "builder/text_helpers.h"
#include "builder/trace_words.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_cursor.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

/// Takes a prefix of `size` characters off, or the whole line away.
void KeepOrClear(MergedLine& line, std::size_t size, bool keep)
{
    const std::string prefix = line.tracer != nullptr ? line.text.substr(0, size) : "";
    line.text.erase(0, keep ? size : npos);
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(prefix, PassWords(line.build, keep), line.text);
}

} // namespace

bool FilterByPass(MergedLine& line)
{
    const PassState& pass = line.build.pass;
    const bool extra_pass = pass.AspPass || pass.HtmPass;
    if (StartsWithNoCase(line.text, "DIR1:"))
        KeepOrClear(line, 5, !extra_pass);
    // "ASP:" and "HTM:" lines belong to both extra passes.
    if (StartsWithNoCase(line.text, "ASP:") || StartsWithNoCase(line.text, "HTM:"))
        KeepOrClear(line, 4, extra_pass);
    return true;
}

namespace {

bool PlaceLists(MergedLine& line)
{
    if (EqualsNoCase(line.text, "<!--TOC HERE-->"))
        WritePageList(line.build, line.tracer);
    else if (EqualsNoCase(line.text, "<!--SITEMAPHERE-->"))
        WriteSiteMap(line.build, line.tracer);
    else
        return false;
    const std::string mark = std::exchange(line.text, {});
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(mark, "the list stands before it, and nothing is left of it", line.text);
    return true;
}

bool CloseWrapper(MergedLine& line)
{
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->TellUse({"]]", line.text});
    line.text = line.build.state.PendingWrapTail;
    line.bound.AddSource(line.text.size());
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->NoteWrapperEnd(line.text);
    return true;
}

/// A line that begins "[[n" becomes the first half of the wrapper; the second half waits for "]]".
bool OpenWrappers(MergedLine& line)
{
    BuildState& state = line.build.state;
    for (int digit = 1; digit <= 9; ++digit) {
        const NumberedMark mark(Family::wrapper, digit);
        if (!line.text.starts_with(mark.View()))
            continue;
        if (line.tracer != nullptr) [[unlikely]]
            line.tracer->TellUse({mark.View(), mark.View()});
        const std::string& value = state.NumberedVariables[Family::wrapper][digit];
        const std::size_t bar = value.find('|');
        if (bar == npos) {
            line.build.messages.ShowBuildMessage("blunder in: " + line.text);
            throw RunError(ErrorKind::invalid_argument,
                           "the wrapper " + std::string(mark.View()) + " has no \"|\"", {},
                           Joined({value.empty() ? "It is not defined: define it" : "Define it",
                                   " in the page list as \"", mark.View(), " = before|behind\"."}));
        }
        line.text = value.substr(0, bar);
        line.bound.AddSource(bar);
        state.PendingWrapTail = value.substr(bar + 1);
        if (line.build.tracer) [[unlikely]]
            line.build.tracer->OpenWrapper(digit);
        if (line.tracer != nullptr) [[unlikely]]
            line.tracer->NoteWrapper(line.text);
    }
    return true;
}

Change ExpandBang(MergedLine& line, TextCursor& cursor, const Bang& bang)
{
    return ExpandUse(line, cursor, bang.Name(), [&](const BracketUse& use) {
        Expansion expansion = bang.expand(use, line.build);
        if (line.tracer != nullptr) [[unlikely]] {
            if (expansion.told.empty())
                expansion.told = bang.about;
            if (bang.expand == ExpandShowHide)
                line.tracer->NoteToggle();
        }
        return expansion;
    });
}

template <const Bang& Kind>
bool ExpandFirst(MergedLine& line)
{
    const std::size_t at = FindNoCase(line.text, Kind.mark);
    if (at == npos)
        return false;
    TextCursor cursor(line.text, line.store);
    cursor.MoveTo(at);
    const Change change = ExpandBang(line, cursor, Kind);
    cursor.Close();
    return change.from != npos;
}

template <const Bang& Kind>
bool ExpandAll(MergedLine& line)
{
    return ChangeWhileLeft(line, Kind.mark,
                           [&](TextCursor& cursor) { return ExpandBang(line, cursor, Kind).from; });
}

/// The smallest digit from `from` to 9 whose mark stands in the line; 10 when there is none.
int NextDigit(std::string_view line, Family family, int from)
{
    const std::string_view lead = kFamilyMark[static_cast<std::size_t>(family)];
    int smallest = 10;
    for (std::size_t at = line.find(lead); at != npos; at = line.find(lead, at + 1)) {
        const char c = at + 2 < line.size() ? line[at + 2] : '\0';
        if (c >= '0' + from && c <= '9')
            smallest = std::min(smallest, c - '0');
        if (smallest == from)
            break;
    }
    return smallest;
}

/// Calls `change(mark, value, cursor)` for every numbered use of a family, for each digit from 1 to
/// 9 in turn, as ChangeWhileLeft does; `value` is what the page list defines for the digit.
template <typename Change>
bool ChangeNumbered(MergedLine& line, Family family, Change change)
{
    const VariableSlots& slots = std::as_const(line.build.state.NumberedVariables)[family];
    bool found = false;
    for (int digit = NextDigit(line.text, family, 1); digit <= 9;
         digit = NextDigit(line.text, family, digit + 1)) {
        const NumberedMark mark(family, digit);
        line.bound.AddSource(slots[digit].size());
        found |= ChangeWhileLeft(line, mark.View(), [&](TextCursor& cursor) {
            return change(mark.View(), slots[digit], cursor);
        });
    }
    return found;
}

using ReferenceExpander = Expansion(const BracketUse& use, std::string_view definition,
                                    MergedLine& line);

/// For the trace: adds where the definition of a use stands.
void TellDefinition(Expansion& expansion, Family family, std::string_view mark, Tracer& tracer)
{
    const int digit = mark.back() - '0';
    expansion.from = tracer.Known().Variable(family, digit).place;
    expansion.told = VariableWords(tracer, family, digit) + expansion.told;
}

template <Family Kind, ReferenceExpander& Expand>
bool ExpandNumberedUses(MergedLine& line)
{
    return ChangeNumbered(
        line, Kind, [&](std::string_view mark, std::string_view definition, TextCursor& cursor) {
            const auto expand = [&](const BracketUse& use) {
                Expansion expansion = Expand(use, definition, line);
                if (line.tracer != nullptr) [[unlikely]]
                    TellDefinition(expansion, Kind, mark, *line.tracer);
                return expansion;
            };
            return ExpandUse(line, cursor, mark, expand).from;
        });
}

bool PutServerScript(MergedLine& line)
{
    const std::string_view word = ExpandServerScript(line.text, line.build.options.addresses);
    if (word.empty())
        return false;
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(word, "a block of script for the server", line.text);
    if (line.text.size() > line.bound.Longest())
        throw RunError(ErrorKind::overflow, "the server script has too much text", {},
                       "Look at the macros in this line: together they make a text without end.");
    return true;
}

/// Finds the first `mark` of a line that is changed step by step, without going over all of it each
/// time: it knows the part of the line in which a mark may begin.
class FirstMark {
  public:
    FirstMark(std::string_view mark, std::string_view line)
        : mark_(mark), from_(FindNoCase(line, mark)), behind_(from_ == npos ? npos : 0)
    {
    }

    void Changed(const Change& change)
    {
        from_ = std::min(from_, SearchStart(change.from, mark_));
        behind_ = std::min(behind_, change.behind);
    }

    /// Moves the cursor to the first mark. When there is none, returns false; the cursor may then
    /// stand somewhere before.
    bool Reach(TextCursor& cursor)
    {
        if (from_ == npos)
            return false;
        if (from_ < cursor.At())
            cursor.MoveTo(from_);
        std::string_view part = cursor.Rest();
        part.remove_suffix(behind_ - std::min(behind_, mark_.size() - 1));
        const std::size_t found = FindNoCase(part, mark_, from_ - cursor.At());
        from_ = found == npos ? npos : cursor.At() + found;
        if (found == npos)
            behind_ = npos;
        else
            cursor.MoveTo(from_);
        return found != npos;
    }

  private:
    std::string_view mark_;
    std::size_t from_;   // no mark begins before
    std::size_t behind_; // in how many characters at the line's end no mark begins
};

void TellVariable(Tracer& tracer, Family family, std::string_view mark, std::string_view value,
                  const TextCursor& cursor)
{
    const int digit = mark.back() - '0';
    const SourceSpan& from = tracer.Known().Variable(family, digit).place;
    const std::string words = VariableWords(tracer, family, digit);
    tracer.Note(mark, from.file.empty() ? words : Joined({Shortened(value), ", ", words}),
                cursor.Before(), cursor.Rest(), from);
}

/// Puts the values of "@@1" or "%%1" and their kin. A value may bring one popup and one swap bang.
template <Family Kind>
bool PutNumberedVariables(MergedLine& line)
{
    FirstMark popups(kPopup.mark, line.text);
    FirstMark swaps(kSwap.mark, line.text);
    return ChangeNumbered(line, Kind,
                          [&](std::string_view mark, std::string_view value, TextCursor& cursor) {
                              if (line.tracer != nullptr) [[unlikely]]
                                  line.tracer->TellUse({mark, mark});
                              std::size_t changed = npos;
                              const auto note = [&](const Change& change) {
                                  changed = std::min(changed, change.from);
                                  popups.Changed(change);
                                  swaps.Changed(change);
                              };
                              if (cursor.Rest().substr(0, mark.size()) != value) {
                                  cursor.Put(mark.size(), value);
                                  note({cursor.At(), cursor.Rest().size() - value.size()});
                                  if (line.tracer != nullptr) [[unlikely]]
                                      TellVariable(*line.tracer, Kind, mark, value, cursor);
                              }
                              if (popups.Reach(cursor))
                                  note(ExpandBang(line, cursor, kPopup));
                              if (swaps.Reach(cursor))
                                  note(ExpandBang(line, cursor, kSwap));
                              return changed;
                          });
}

constexpr std::string_view kOptionTag = "<option value=";

void MarkSelected(MergedLine& line)
{
    const std::size_t end = line.text.find('>');
    if (end == npos)
        return;
    line.text.insert(end, " selected");
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(kOptionTag, "selected, it is this page's", line.text);
}

/// Marks the option of the current page in a hand-written drop-down.
bool SelectOption(MergedLine& line)
{
    const std::string_view file = line.build.CurrentRecord().file;
    const std::string_view normalized = DropParentPrefix(file);
    if (line.text.starts_with(kOptionTag)) {
        if (FirstChars(FromChar(line.text, 16), normalized.size()) == normalized)
            MarkSelected(line);
    } else if (FromChar(line.text, 4).starts_with(kOptionTag)) {
        // The value stands from character 19 on; the format compares from 20.
        if (FirstChars(FromChar(line.text, 20), file.size()) == file)
            MarkSelected(line);
    }
    return true;
}

void ReplaceEscape(MergedLine& line, std::string_view escape, std::string_view character)
{
    if (ReplaceEach(line.text, escape, character) && line.tracer != nullptr)
        line.tracer->Note(escape, Joined({"stands for ", character}), line.text);
}

bool ReplaceEscapes(MergedLine& line)
{
    ReplaceEscape(line, "{}", "|");
    ReplaceEscape(line, "{{", "[");
    ReplaceEscape(line, "}}", "]");
    return false; // no step behind it is to see what has become of the line
}

/// In the format's order.
constexpr Step kSteps[] = {
    {kPrefix, FilterByPass},
    {kMarker, PlaceLists},
    {kWrapEnd, CloseWrapper},
    {kBang, ExpandAll<kPopup>},
    {kWrapper, OpenWrappers},
    {kBang, ExpandNumberedUses<Family::bang, ExpandNumbered>},
    {kDollar, ExpandNumberedUses<Family::dollar, ExpandNumbered>},
    {kDirective, PutServerScript},
    {kBang, ExpandFirst<kFlv>},
    {kBang, ExpandAll<kMailto>},
    {kBang, ExpandAll<kShowHide>},
    {kBang, ExpandAll<kFlash>},
    {kBang, ExpandAll<kSwap>},
    {kReference, ExpandNumberedUses<Family::group_ref, ExpandGroupRef>},
    {kReference, ExpandNumberedUses<Family::page_ref, ExpandPageRef>},
    {kAtNumber, PutNumberedVariables<Family::at>},
    {kPercent, PutNumberedVariables<Family::percent>},
    {kAt | kStyle, ReplaceAtVariables},
    {kOption, SelectOption},
    {kBang, ExpandAll<kPopup>},
    {kEscape, ReplaceEscapes},
};

} // namespace

void MergeLine(MergedLine& line)
{
    RunSteps(kSteps, line);
}

} // namespace kiv
