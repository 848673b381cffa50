#include "builder/template_merge.h"

#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/build_state.h"
#include "builder/cross_references.h"
#include "builder/expansion_loop.h"
#include "builder/navigation_lists.h"
#include "builder/server_scripts.h"
#include "builder/text_helpers.h"
#include "text/text.h"

#include <algorithm>
#include <utility>

namespace kiv {

bool FilterByPass(MergedLine& line)
{
    const PassState& pass = line.build.pass;
    const bool extra_pass = pass.AspPass || pass.HtmPass;
    std::string& text = line.text;
    if (StartsWithNoCase(text, "DIR1:")) {
        if (extra_pass)
            text.clear();
        else
            text.erase(0, 5);
    }
    // "ASP:" and "HTM:" lines belong to both extra passes.
    if (StartsWithNoCase(text, "ASP:") || StartsWithNoCase(text, "HTM:")) {
        if (extra_pass)
            text.erase(0, 4);
        else
            text.clear();
    }
    return true;
}

namespace {

bool PlaceLists(MergedLine& line)
{
    if (EqualsNoCase(line.text, "<!--TOC HERE-->"))
        WritePageList(line.build);
    else if (EqualsNoCase(line.text, "<!--SITEMAPHERE-->"))
        WriteSiteMap(line.build);
    else
        return false;
    line.text.clear();
    return true;
}

bool CloseWrapper(MergedLine& line)
{
    line.text = line.build.state.PendingWrapTail;
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
        const std::string& value = state.NumberedVariables[Family::wrapper][digit];
        const std::size_t bar = value.find('|');
        if (bar == npos) {
            line.build.messages.ShowBuildMessage("blunder in: " + line.text);
            throw RunError(ErrorKind::invalid_argument,
                           "the wrapper " + std::string(mark.View()) + " has no \"|\"");
        }
        line.text = value.substr(0, bar);
        state.PendingWrapTail = value.substr(bar + 1);
    }
    return true;
}

std::size_t ExpandBangAt(MergedLine& line, std::size_t at, const Bang& bang)
{
    return ExpandUse(line, at, bang.Name(),
                     [&](const BracketUse& use) { return bang.expand(use, line.build); });
}

template <const Bang& Kind>
bool ExpandFirst(MergedLine& line)
{
    const std::size_t at = FindNoCase(line.text, Kind.mark);
    return at != npos && ExpandBangAt(line, at, Kind) != npos;
}

template <const Bang& Kind>
bool ExpandAll(MergedLine& line)
{
    return ChangeWhileLeft(line, Kind.mark,
                           [&](std::size_t at) { return ExpandBangAt(line, at, Kind); });
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
    }
    return smallest;
}

/// Calls `change(mark, value, position)` for every numbered use of a family, for each digit from 1
/// to 9 in turn, as ChangeWhileLeft does; `value` is what the page list defines for the digit.
template <typename Change>
bool ChangeNumbered(MergedLine& line, Family family, Change change)
{
    const VariableSlots& slots = std::as_const(line.build.state.NumberedVariables)[family];
    bool found = false;
    for (int digit = NextDigit(line.text, family, 1); digit <= 9;
         digit = NextDigit(line.text, family, digit + 1)) {
        const NumberedMark mark(family, digit);
        found |= ChangeWhileLeft(line, mark.View(), [&](std::size_t at) {
            return change(mark.View(), slots[digit], at);
        });
    }
    return found;
}

using ReferenceExpander = Expansion(const BracketUse& use, std::string_view definition,
                                    Build& build);

template <Family Kind, ReferenceExpander& Expand>
bool ExpandNumberedUses(MergedLine& line)
{
    return ChangeNumbered(line, Kind,
                          [&](std::string_view mark, std::string_view definition, std::size_t at) {
                              return ExpandUse(line, at, mark, [&](const BracketUse& use) {
                                  return Expand(use, definition, line.build);
                              });
                          });
}

bool PutServerScript(MergedLine& line)
{
    return ExpandServerScript(line.text, line.build.options.addresses);
}

/// Finds the first `mark` of a line that is changed step by step, and each time looks only where
/// one can be.
class FirstMark {
  public:
    explicit FirstMark(std::string_view mark) : mark_(mark) {}

    /// The line is another one from `at` (0-based) on.
    void Changed(std::size_t at)
    {
        free_to_ = std::min(free_to_, SearchStart(at, mark_));
        line_is_free_ = false;
    }

    /// The first mark after `size` characters were put in at `at` (0-based), and nothing else was
    /// changed since the last call; npos when there is none.
    std::size_t Find(std::string_view line, std::size_t at, std::size_t size)
    {
        if (line_is_free_)
            line = line.substr(0, at + size + mark_.size() - 1);
        const std::size_t start = std::min(free_to_, SearchStart(at, mark_));
        const std::size_t found = FindNoCase(line, mark_, start);
        line_is_free_ = found == npos;
        free_to_ = line_is_free_ ? npos : SearchStart(found, mark_);
        return found;
    }

  private:
    std::string_view mark_;
    std::size_t free_to_ = 0; // no mark begins before
    bool line_is_free_ = false;
};

/// Puts the values of "@@1" or "%%1" and their kin. A value may bring one popup and one swap bang.
template <Family Kind>
bool PutNumberedVariables(MergedLine& line)
{
    FirstMark popups(kPopup.mark);
    FirstMark swaps(kSwap.mark);
    return ChangeNumbered(
        line, Kind, [&](std::string_view mark, std::string_view value, std::size_t at) {
            std::string& text = line.text;
            std::size_t changed = text.compare(at, mark.size(), value) == 0 ? npos : at;
            text.replace(at, mark.size(), value);
            if (const std::size_t popup = popups.Find(text, at, value.size()); popup != npos) {
                changed = std::min(changed, ExpandBangAt(line, popup, kPopup));
                swaps.Changed(popup);
            }
            if (const std::size_t swap = swaps.Find(text, at, value.size()); swap != npos) {
                changed = std::min(changed, ExpandBangAt(line, swap, kSwap));
                popups.Changed(swap);
            }
            return changed;
        });
}

void MarkSelected(std::string& line)
{
    const std::size_t end = line.find('>');
    if (end != npos)
        line.insert(end, " selected");
}

/// Marks the option of the current page in a hand-written drop-down.
bool SelectOption(MergedLine& line)
{
    constexpr std::string_view kOptionTag = "<option value=";
    const std::string_view file = line.build.CurrentRecord().file;
    const std::string_view normalized = DropParentPrefix(file);
    if (line.text.starts_with(kOptionTag)) {
        if (FirstChars(FromChar(line.text, 16), normalized.size()) == normalized)
            MarkSelected(line.text);
    } else if (FromChar(line.text, 4).starts_with(kOptionTag)) {
        // The value stands from character 19 on; the format compares from 20.
        if (FirstChars(FromChar(line.text, 20), file.size()) == file)
            MarkSelected(line.text);
    }
    return true;
}

bool ReplaceEscapes(MergedLine& line)
{
    ReplaceEach(line.text, "{}", "|");
    ReplaceEach(line.text, "{{", "[");
    ReplaceEach(line.text, "}}", "]");
    return true;
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
