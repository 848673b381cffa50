// Marks that the news composer looks for in a page list.
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/word_slips.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/news_marks.h"
#include "utilities/news_settings.h"

#include <algorithm>

namespace kiv {

namespace {

/// A mark that the composer looks for in this section's page list.
struct WantedMark {
    std::string_view mark;
    std::string site;     // caption of the composer's site
    bool is_home = false; // the list is the site's second one
};

/// Whether both paths lead to one folder.
bool IsFolderOf(const SiteView& site, const std::string& folder)
{
    if (folder.empty() || !site.files.FolderExists(folder))
        return false;
    const auto place = [&](const std::string& of) {
        return site.files.PlaceOf(site.files.Open(of + std::string(kPageListFile)));
    };
    const std::string own = place(site.folder);
    return !own.empty() && own == place(folder);
}

/// What cannot be looked up is no matter of the site's.
std::vector<WantedMark> WantedMarks(const SiteView& site)
{
    std::vector<WantedMark> wanted;
    try {
        for (const SitePreset& preset : ReadNewsSettings(site.files).presets) {
            const std::string& caption = CaptionOf(preset);
            if (IsFolderOf(site, preset.folder) && !IsScratchSite(preset))
                for (const std::string_view mark : {kNewsLineMark, kNewsEntryMark})
                    wanted.push_back({mark, caption});
            if (IsFolderOf(site, preset.home_folder))
                wanted.push_back({kNewsLineMark, caption, true});
        }
    } catch (const RunError&) {
        return {};
    }
    return wanted;
}

/// Calls `tell(list, wanted)` for each mark that has no line end as the composer wants it.
template <typename Tell>
void ForUnseen(const SiteView& site, Tell tell)
{
    const SourceText* list = site.PageList();
    if (list == nullptr || IsUtf16(list->bytes))
        return;
    for (const WantedMark& wanted : WantedMarks(site))
        if (!Contains(list->bytes, NewsMarkLine(wanted.mark)))
            tell(*list, wanted);
}

/// Whether a remark is the mark, misspelled. Both marks are alike.
bool IsMarkMisspelled(std::string_view line, std::string_view mark)
{
    const std::string_view word = HeadWord(line.substr(std::min<std::size_t>(1, line.size())));
    const std::string_view number = LastChars(mark, 1);
    return line.starts_with(';') && word.ends_with(number) &&
           IsSlipOf(word, mark.substr(1), mark.size() - 2);
}

/// The first line (1-based) that holds the words, if only in another case or misspelled; 0: none
/// does.
int LineOfMark(const SourceText& list, std::string_view mark)
{
    const auto first = [&](bool (*holds)(std::string_view, std::string_view)) {
        const auto found = std::ranges::find_if(
            list.lines, [&](std::string_view line) { return holds(line, mark); });
        return found == list.lines.end() ? 0 : static_cast<int>(found - list.lines.begin()) + 1;
    };
    int line = first(Contains);
    if (line == 0)
        line = first(ContainsNoCase);
    return line > 0 ? line : first(IsMarkMisspelled);
}

} // namespace

/// A list without the mark for news lines alone is one whose articles bear them.
void FindMissingNewsMarks(const SiteView& site, FindingSink& sink)
{
    ForUnseen(site, [&](const SourceText& list, const WantedMark& wanted) {
        const int line = LineOfMark(list, wanted.mark);
        const bool is_wanted = wanted.is_home || wanted.mark == kNewsEntryMark || line > 0;
        if (Contains(list.bytes, wanted.mark) || !is_wanted)
            return;
        sink.Add(site.PlaceOf(list, line),
                 Joined({"the news composer finds no line ", wanted.mark, " for \"", wanted.site,
                         "\" and would put nothing there"}),
                 Joined({line > 0 ? "write it exactly like this: "
                                  : "put such a line where news should go: ",
                         wanted.mark}));
    });
}

void FindNewsMarkLineEnds(const SiteView& site, FindingSink& sink)
{
    ForUnseen(site, [&](const SourceText& list, const WantedMark& wanted) {
        if (!Contains(list.bytes, wanted.mark))
            return;
        const int line = LineOfMark(list, wanted.mark);
        const bool ends_line = list.Line(line).ends_with(wanted.mark);
        sink.Add(
            site.PlaceOf(list, line),
            Joined({"the news composer does not see this ", wanted.mark, " for \"", wanted.site,
                    "\": ", ends_line ? "no CR LF" : "no line end", " stands right behind it"}),
            ends_line ? "save the page list with CR LF at the line ends"
                      : "leave nothing behind it on its line");
    });
}

} // namespace kiv
