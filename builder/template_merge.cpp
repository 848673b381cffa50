#include "builder/template_merge.h"

#include "builder/at_variables.h"
#include "builder/cross_references.h"
#include "builder/expansion_loop.h"
#include "builder/line_triggers.h"
#include "builder/navigation_lists.h"
#include "builder/server_scripts.h"
#include "builder/text_helpers.h"
#include "text/text.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

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

/// Calls `expand(digit, position)`, an expander as ExpandWhileLeft wants it, for every numbered use
/// of a family: for each digit from 1 to 9 in turn, while the line holds its mark.
template <typename Expand>
bool ExpandNumberedUses(std::string& line, Family family, Expand expand)
{
    bool found = false;
    for (int digit = NextDigit(line, family, 1); digit <= 9;
         digit = NextDigit(line, family, digit + 1))
        found |= ExpandWhileLeft(line, NumberedMark(family, digit).View(),
                                 [&](std::size_t at) { return expand(digit, at); });
    return found;
}

/// Takes the lines of other passes away and the prefix off those of this one. "ASP:" and "HTM:"
/// lines belong to both extra passes.
void FilterByPass(std::string& line, const PassState& pass)
{
    const bool extra_pass = pass.AspPass || pass.HtmPass;
    if (StartsWithNoCase(line, "DIR1:")) {
        if (extra_pass)
            line.clear();
        else
            line.erase(0, 5);
    }
    if (StartsWithNoCase(line, "ASP:") || StartsWithNoCase(line, "HTM:")) {
        if (extra_pass)
            line.erase(0, 4);
        else
            line.clear();
    }
}

void PlaceLists(std::string& line, Build& build)
{
    if (EqualsNoCase(line, "<!--TOC HERE-->")) {
        WritePageList(build);
        line.clear();
    } else if (EqualsNoCase(line, "<!--SITEMAPHERE-->")) {
        WriteSiteMap(build);
        line.clear();
    }
}

/// A line that begins "[[n" becomes the first half of the wrapper; the second half waits for "]]".
void OpenWrappers(std::string& line, Build& build)
{
    for (int digit = 1; digit <= 9; ++digit) {
        if (!line.starts_with(NumberedMark(Family::wrapper, digit).View()))
            continue;
        const std::string& value = build.state.NumberedVariables[Family::wrapper][digit];
        const std::size_t bar = value.find('|');
        if (bar == npos) {
            build.messages.ShowBuildMessage("blunder in: " + line);
            throw RunError(ErrorKind::invalid_argument,
                           "the wrapper [[" + Decimal(digit) + " has no \"|\"");
        }
        line = value.substr(0, bar);
        build.state.PendingWrapTail = value.substr(bar + 1);
    }
}

bool ExpandNumberedMacros(std::string& line, Family family, Build& build)
{
    return ExpandNumberedUses(line, family, [&](int digit, std::size_t at) {
        return ExpandNumbered(line, at, digit, family, build.state.NumberedVariables,
                              build.messages);
    });
}

void ExpandBangs(std::string& line, Build& build)
{
    const Addresses& addresses = build.options.addresses;
    BuildMessages& messages = build.messages;
    if (ContainsNoCase(line, "!!FLV["))
        ExpandFlv(line, 0, addresses, messages);
    ExpandWhileLeft(line, "!!MAILTO[",
                    [&](std::size_t at) { return ExpandMailto(line, at, messages); });
    ExpandWhileLeft(line, "!!SHOWHIDE[", [&](std::size_t at) {
        return ExpandShowHide(line, at, build.state.page.bangs, messages);
    });
    ExpandWhileLeft(line, "!!FLASH[",
                    [&](std::size_t at) { return ExpandFlash(line, at, addresses, messages); });
    ExpandWhileLeft(line, "!!SWAP[",
                    [&](std::size_t at) { return ExpandSwap(line, at, messages); });
}

bool ExpandReferences(std::string& line, Build& build)
{
    PageRecord& page = build.CurrentRecord();
    const NumberedVariables& variables = build.state.NumberedVariables;
    const std::size_t file_size = page.file.size();
    bool found = ExpandNumberedUses(line, Family::group_ref, [&](int digit, std::size_t at) {
        return ExpandGroupRef(line, at, digit, variables, page, build.messages);
    });
    found |= ExpandNumberedUses(line, Family::page_ref, [&](int digit, std::size_t at) {
        return ExpandPageRef(line, at, digit, variables, page, build.messages);
    });
    if (page.file.size() != file_size) // a reference cuts the folders off the record
        build.state.page_list_is_valid = false;
    return found;
}

/// Finds the first `mark` of a line that is changed step by step, without going over all of it each
/// time.
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

/// Puts the values of "@@1" or "%%1" and their kin. A value may bring one popup and one swap bang
/// along.
bool ReplaceNumberedVariables(std::string& line, Family family, Build& build)
{
    FirstMark popups("!!pop[");
    FirstMark swaps("!!swap[");
    return ExpandNumberedUses(line, family, [&](int digit, std::size_t at) {
        const std::string& value = build.state.NumberedVariables[family][digit];
        std::size_t changed = line.compare(at, 3, value) == 0 ? npos : at;
        line.replace(at, 3, value);
        if (const std::size_t popup = popups.Find(line, at, value.size()); popup != npos) {
            changed =
                std::min(changed, ExpandPopup(line, popup, build.state.page.bangs, build.messages));
            swaps.Changed(popup);
        }
        if (const std::size_t swap = swaps.Find(line, at, value.size()); swap != npos) {
            changed = std::min(changed, ExpandSwap(line, swap, build.messages));
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
void SelectOption(std::string& line, const PageRecord& page)
{
    constexpr std::string_view kOption = "<option value=";
    const std::string_view normalized = DropParentPrefix(page.file);
    if (line.starts_with(kOption)) {
        if (FirstChars(FromChar(line, 16), normalized.size()) == normalized)
            MarkSelected(line);
    } else if (FromChar(line, 4).starts_with(kOption)) {
        // The value stands from character 19 on; the format compares from 20.
        if (FirstChars(FromChar(line, 20), page.file.size()) == page.file)
            MarkSelected(line);
    }
}

void ReplaceEscapes(std::string& line)
{
    ReplaceEach(line, "{}", "|");
    ReplaceEach(line, "{{", "[");
    ReplaceEach(line, "}}", "]");
}

/// Calls `step` when `line` holds one of the triggers that it acts on, and looks the line through
/// again when it returns true, as a step does that has found something.
class Steps {
  public:
    Steps(std::string& line, Triggers triggers) : line_(line), triggers_(triggers) {}

    template <typename Step>
    void On(Triggers wanted, Step step)
    {
        if ((triggers_ & wanted) != 0 && step())
            triggers_ = ScanLine(line_);
    }

    Triggers triggers() const { return triggers_; }

  private:
    std::string& line_;
    Triggers triggers_;
};

} // namespace

void MergeLine(std::string& line, Triggers triggers, Build& build)
{
    BuildState& state = build.state;
    Steps steps(line, triggers);
    const auto expand_popups = [&](std::string_view mark) {
        return ExpandWhileLeft(line, mark, [&](std::size_t at) {
            return ExpandPopup(line, at, state.page.bangs, build.messages);
        });
    };
    const auto always = [](auto step) {
        return [step] {
            step();
            return true;
        };
    };
    steps.On(kPrefix, always([&] { FilterByPass(line, build.pass); }));
    steps.On(kMarker, always([&] { PlaceLists(line, build); }));
    steps.On(kWrapEnd, always([&] { line = state.PendingWrapTail; }));
    steps.On(kBang, [&] { return expand_popups("!!POP["); });
    steps.On(kWrapper, always([&] { OpenWrappers(line, build); }));
    steps.On(kBang, [&] { return ExpandNumberedMacros(line, Family::bang, build); });
    steps.On(kDollar, [&] { return ExpandNumberedMacros(line, Family::dollar, build); });
    steps.On(kDirective, always([&] { ExpandServerScript(line, build.options.addresses); }));
    steps.On(kBang, always([&] { ExpandBangs(line, build); }));
    steps.On(kReference, [&] { return ExpandReferences(line, build); });
    steps.On(kAtNumber, [&] { return ReplaceNumberedVariables(line, Family::at, build); });
    steps.On(kPercent, [&] { return ReplaceNumberedVariables(line, Family::percent, build); });
    steps.On(kAt | kStyle, [&] { return ReplaceAtVariables(line, steps.triggers(), build); });
    steps.On(kOption, always([&] { SelectOption(line, build.CurrentRecord()); }));
    steps.On(kBang, [&] { return expand_popups("!!POP"); });
    steps.On(kEscape, always([&] { ReplaceEscapes(line); }));
}

namespace {

/// "=1=" and its kin keep a template line on some pages only. Any other code is text.
void FilterByPosition(std::string& line, int page, int page_count)
{
    if (line.size() < 3 || line[0] != '=' || line[2] != '=')
        return;
    const bool first = page == 1;
    const bool last = page == page_count;
    bool keep = false;
    switch (line[1]) {
    case '1':
        keep = first;
        break;
    case '2':
        keep = !first;
        break;
    case '5':
        keep = !first && !last;
        break;
    case '8':
        keep = !last;
        break;
    case '9':
        keep = last;
        break;
    default:
        return;
    }
    line.erase(0, keep ? 3 : npos);
}

void FillMeta(std::string& line, std::string_view name, std::string_view content)
{
    if (content.empty() || !ContainsNoCase(line, "<META NAME=\"" + std::string(name) + "\""))
        return;
    line = "<meta NAME=\"" + std::string(name) + "\" CONTENT=\"" + std::string(content) + "\">";
}

} // namespace

void WriteTemplateLine(std::string& line, Triggers triggers, Build& build)
{
    BuildState& state = build.state;
    if ((triggers & kMeta) != 0) {
        const PageRecord& page = build.CurrentRecord();
        FillMeta(line, "keywords", page.keywords);
        FillMeta(line, "description", page.description);
        triggers = ScanLine(line);
    }
    if ((triggers & (kPrefix | kPosition)) != 0) {
        FilterByPass(line, build.pass);
        FilterByPosition(line, state.page.number, state.PageCount);
        triggers = ScanLine(line);
    }
    if (EqualsNoCase(line, "<!--DROPDOWN HERE-->")) {
        WritePageDropDown(build);
        return;
    }
    if (EqualsNoCase(line, "<!--TOC HERE-->")) {
        WritePageList(build);
        return;
    }
    if (line.empty())
        return;
    MergeLine(line, triggers, build);
    if (!line.empty())
        WriteLine(state.output, line);
}

} // namespace kiv
