#include "utilities/news_composer.h"

#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/news_names.h"
#include "utilities/text_conversions.h"

#include <array>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kBangMarker = ";inserthere1";
constexpr std::string_view kEntryMarker = ";inserthere2";

/// The header fields in the order of the bang line.
constexpr std::array<std::string NewsItem::*, 6> kHeaderFields = {
    &NewsItem::date,   &NewsItem::file_name, &NewsItem::title,
    &NewsItem::byline, &NewsItem::newspaper, &NewsItem::subhead,
};

/// The files of one run.
struct NewsPaths {
    std::string body;
    std::string site_list;
    std::string home_list; // empty: none
};

NewsPaths PathsOf(const SitePreset& preset, const std::string& file_name)
{
    NewsPaths paths;
    paths.body = Joined({preset.folder, "txt\\", file_name, ".txt"});
    paths.site_list = Joined({preset.folder, kPageListFile});
    if (!preset.home_folder.empty())
        paths.home_list = Joined({preset.home_folder, kPageListFile});
    return paths;
}

/// Puts `lines` behind every line end that follows `marker`.
void InsertAfter(std::string& page_list, std::string_view marker, std::string_view lines)
{
    const std::string line = Joined({marker, kCrLf});
    ReplaceEach(page_list, line, line + std::string(lines));
}

/// The page entry. The empty line behind "@@EOY" lets the next run find and remove that switch.
std::string PageEntry(const NewsItem& item, std::string_view bang)
{
    return Joined({"@file = ", item.file_name, "\r\n@title = ", item.title, "\r\n!!2",
                   FromChar(bang, 4), "\r\n++txt\\", item.file_name, ".txt\r\n@@EOY\r\n\r\n"});
}

/// The article as it was typed: lead first, line ends doubled when the text is single spaced.
std::string ArticleText(const NewsItem& item)
{
    std::string text;
    if (!item.lead.empty())
        Append(text, {"<b>", item.lead, "</b>\r\n\r\n"});
    text.append(item.text);
    if (item.single_spaced)
        ReplaceEach(text, kCrLf, "\r\n\r\n");
    return text;
}

void Highlight(std::string& text, const std::string& name)
{
    if (!name.empty())
        ReplaceEach(text, name, "<span class=\"highlighter\">" + name + "</span>");
}

void makehtml(Machine& machine, const NewsDesk& desk, const NewsItem& item,
              const SitePreset& preset, const NewsPaths& paths, std::string text)
{
    Files& files = machine.files;
    const std::string bang = "!!1[" + SourceString(item) + "]";
    const std::string bang_line = Joined({bang, kCrLf});
    if (!item.as_is)
        text = cleanme(text);
    if (preset.highlight)
        Highlight(text, desk.settings.highlight_name);
    desk.switchto(preset.folder);

    if (!paths.home_list.empty()) {
        std::string home_list = files.ReadFile(paths.home_list);
        InsertAfter(home_list, kBangMarker, bang_line);
        files.WriteFile(paths.home_list, home_list);
    }
    std::string site_list = files.ReadFile(paths.site_list);
    if (!Contains(site_list, kBangMarker))
        text.insert(0, bang_line);
    ReplaceEach(site_list, "@@EOY\r\n\r\n", "");
    InsertAfter(site_list, kBangMarker, bang_line);
    InsertAfter(site_list, kEntryMarker, PageEntry(item, bang));

    // Both places are found fit before either file is written.
    const OutputFile body_file = files.Open(paths.body);
    const OutputFile site_list_file = files.Open(paths.site_list);
    files.Commit(body_file, text);
    files.Commit(site_list_file, site_list);
    if (!paths.home_list.empty())
        for (const std::string& path : {paths.body, paths.site_list, paths.home_list})
            machine.programs.Start({desk.editor_command, path});
}

bool newsdoit(Machine& machine, const NewsDesk& desk, const NewsItem& item,
              const SitePreset& preset)
{
    std::string text = ArticleText(item);
    const NewsPaths paths = PathsOf(preset, item.file_name);
    if (IsScratchSite(preset)) {
        machine.files.MakeFolder(preset.folder);
        machine.files.MakeFolder(preset.folder + "txt");
    }
    if (machine.files.FileExists(paths.body)) {
        machine.reporter.reportmsg("That file already exists. Try Again.");
        return false;
    }
    makehtml(machine, desk, item, preset, paths, std::move(text));
    return true;
}

} // namespace

void FillFromName(NewsItem& item, const NewsSettings& settings)
{
    if (std::string date = DateOfName(item.file_name); !date.empty())
        item.date = std::move(date);
    if (std::string name = PublicationOfName(item.file_name, settings); !name.empty())
        item.newspaper = std::move(name);
}

std::string SourceString(const NewsItem& item)
{
    std::string source;
    for (std::size_t i = 0; i < kHeaderFields.size(); ++i)
        Append(source, {i == 0 ? "" : "|", item.*kHeaderFields[i]});
    return source;
}

void GrabSource(NewsItem& item, std::string_view clipboard)
{
    std::string_view source = Trim(clipboard.empty() ? clipboard : TakeLine(clipboard));
    const bool is_bang = source.size() > 3 && source.starts_with("!!") && source[2] >= '0' &&
                         source[2] <= '9' && source[3] == '[';
    if (is_bang) {
        source.remove_prefix(4);
        if (source.ends_with(']'))
            source.remove_suffix(1);
    }
    const std::vector<std::string_view> fields = Split(source, '|');
    for (std::size_t i = 0; i < kHeaderFields.size(); ++i)
        item.*kHeaderFields[i] = i < fields.size() ? Trim(fields[i]) : "";
}

bool ComposeNews(Machine& machine, const NewsDesk& desk, const NewsItem& item)
{
    const std::vector<SitePreset>& presets = desk.settings.presets;
    const bool chosen = item.site >= 1 && item.site <= presets.size();
    if (!chosen)
        machine.reporter.reportmsg("Choose a Website");
    if (item.file_name.empty())
        machine.reporter.reportmsg("Finish filling in the information");
    return chosen && !item.file_name.empty() &&
           newsdoit(machine, desk, item, presets[item.site - 1]);
}

std::string cleanme(std::string_view text)
{
    constexpr std::string_view kOuter = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kOuter);
    if (first == npos)
        return EmailToHtml("", {});
    return EmailToHtml(text.substr(first, text.find_last_not_of(kOuter) - first + 1), {});
}

} // namespace kiv
