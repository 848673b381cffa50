#include "builder/template_merge.h"

#include "builder/at_variables.h"
#include "builder/cross_references.h"
#include "builder/expansion_loop.h"
#include "builder/line_triggers.h"
#include "builder/navigation_lists.h"
#include "builder/server_scripts.h"
#include "builder/text_helpers.h"
#include "text/text.h"

#include <utility>

namespace kiv {

namespace {

/// "!!1", "@@1" and so on: a family's mark and a digit.
std::string MarkOf(Family family, int digit)
{
    return kFamilyMark[static_cast<std::size_t>(family)] + Decimal(digit);
}

/// Takes the lines of other passes away and the prefix off those of this one. "ASP:" and "HTM:" lines belong to both
/// extra passes.
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
        if (!line.starts_with(MarkOf(Family::wrapper, digit)))
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

void ExpandNumberedMacros(std::string& line, Family family, Build& build)
{
    for (int digit = 1; digit <= 9; ++digit)
        ExpandWhileLeft(line, MarkOf(family, digit), [&](std::size_t at) {
            ExpandNumbered(line, at, digit, family, build.state.NumberedVariables, build.messages);
        });
}

void ExpandBangs(std::string& line, Build& build)
{
    const Addresses& addresses = build.options.addresses;
    BuildMessages& messages = build.messages;
    if (ContainsNoCase(line, "!!FLV["))
        ExpandFlv(line, addresses, messages);
    ExpandWhileLeft(line, "!!MAILTO[", [&](std::size_t) { ExpandMailto(line, messages); });
    ExpandWhileLeft(line, "!!SHOWHIDE[", [&](std::size_t) {
        ExpandShowHide(line, build.state.page.bangs, messages);
    });
    ExpandWhileLeft(line, "!!FLASH[", [&](std::size_t) { ExpandFlash(line, addresses, messages); });
    ExpandWhileLeft(line, "!!SWAP[", [&](std::size_t) { ExpandSwap(line, messages); });
}

void ExpandReferences(std::string& line, Build& build)
{
    PageRecord& page = build.CurrentRecord();
    const NumberedVariables& variables = build.state.NumberedVariables;
    const std::size_t file_size = page.file.size();
    for (int digit = 1; digit <= 9; ++digit)
        ExpandWhileLeft(line, MarkOf(Family::group_ref, digit), [&](std::size_t at) {
            ExpandGroupRef(line, at, digit, variables, page, build.messages);
        });
    for (int digit = 1; digit <= 9; ++digit)
        ExpandWhileLeft(line, MarkOf(Family::page_ref, digit), [&](std::size_t at) {
            ExpandPageRef(line, at, digit, variables, page, build.messages);
        });
    if (page.file.size() != file_size) // a reference cuts the folders off the record
        build.state.page_list_is_valid = false;
}

/// Puts the values of "@@1" or "%%1" and their kin. A value may bring one popup and one swap bang along.
void ReplaceNumberedVariables(std::string& line, Family family, Build& build)
{
    for (int digit = 1; digit <= 9; ++digit) {
        const std::string mark = MarkOf(family, digit);
        ExpandWhileLeft(line, mark, [&](std::size_t at) {
            line.replace(at, mark.size(), build.state.NumberedVariables[family][digit]);
            ExpandPopup(line, build.state.page.bangs, build.messages);
            ExpandSwap(line, build.messages);
        });
    }
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

/// Calls `step` when `line` holds one of the triggers that it acts on, and looks the line through again afterwards.
class Steps {
  public:
    Steps(std::string& line, Triggers triggers) : line_(line), triggers_(triggers) {}

    template <typename Step> void On(Triggers wanted, Step step)
    {
        if ((triggers_ & wanted) == 0)
            return;
        step();
        triggers_ = ScanLine(line_);
    }

  private:
    std::string& line_;
    Triggers triggers_;
};

} // namespace

void MergeLine(std::string& line, Build& build)
{
    MergeLine(line, ScanLine(line), build);
}

void MergeLine(std::string& line, std::uint32_t triggers, Build& build)
{
    BuildState& state = build.state;
    Steps steps(line, triggers);
    const auto expand_popups = [&](std::string_view mark) {
        ExpandWhileLeft(line, mark, [&](std::size_t) {
            ExpandPopup(line, state.page.bangs, build.messages);
        });
    };
    steps.On(kPrefix, [&] { FilterByPass(line, build.pass); });
    steps.On(kMarker, [&] { PlaceLists(line, build); });
    steps.On(kWrapEnd, [&] { line = state.PendingWrapTail; });
    steps.On(kBang, [&] { expand_popups("!!POP["); });
    steps.On(kWrapper, [&] { OpenWrappers(line, build); });
    steps.On(kBang, [&] { ExpandNumberedMacros(line, Family::bang, build); });
    steps.On(kDollar, [&] { ExpandNumberedMacros(line, Family::dollar, build); });
    steps.On(kAt, [&] { ExpandServerScript(line, build.options.addresses); });
    steps.On(kBang, [&] { ExpandBangs(line, build); });
    steps.On(kReference, [&] { ExpandReferences(line, build); });
    steps.On(kAt, [&] { ReplaceNumberedVariables(line, Family::at, build); });
    steps.On(kPercent, [&] { ReplaceNumberedVariables(line, Family::percent, build); });
    steps.On(kAt | kStyle, [&] { ReplaceAtVariables(line, build); });
    steps.On(kOption, [&] { SelectOption(line, build.CurrentRecord()); });
    steps.On(kBang, [&] { expand_popups("!!POP"); });
    steps.On(kEscape, [&] { ReplaceEscapes(line); });
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

void WriteTemplateLine(std::string line, Build& build)
{
    BuildState& state = build.state;
    const PageRecord& page = build.CurrentRecord();
    FillMeta(line, "keywords", page.keywords);
    FillMeta(line, "description", page.description);
    FilterByPass(line, build.pass);
    FilterByPosition(line, state.page.number, state.PageCount);
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
    MergeLine(line, build);
    if (!line.empty())
        WriteLine(state.output, line);
}

} // namespace kiv
