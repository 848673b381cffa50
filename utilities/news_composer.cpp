#include "utilities/news_composer.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/news_marks.h"
#include "utilities/news_names.h"
#include "utilities/text_conversions.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace kiv {

namespace {

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
    paths.body = Joined({preset.folder, kNewsArticleFolder, file_name, ".txt"});
    paths.site_list = Joined({preset.folder, kPageListFile});
    if (!preset.home_folder.empty())
        paths.home_list = Joined({preset.home_folder, kPageListFile});
    return paths;
}

/// Puts `lines` behind every line end that follows `marker`.
void InsertAfter(std::string& page_list, std::string_view marker, std::string_view lines)
{
    const std::string line = NewsMarkLine(marker);
    ReplaceEach(page_list, line, line + std::string(lines));
}

/// Whether `lines` stand behind a marker already: a run that was cut short has put them there. A
/// list without the marker gets nothing, so it has all.
bool HasAfter(std::string_view page_list, std::string_view marker, std::string_view lines)
{
    return FindNewsMark(page_list, marker) != NewsMark::found || Contains(page_list, lines);
}

/// The page entry but for its end.
std::string EntryHead(const NewsItem& item, std::string_view bang)
{
    return Joined({"@file = ", item.file_name, "\r\n@title = ", item.title, "\r\n!!2",
                   FromChar(bang, 4), "\r\n++txt\\", item.file_name, ".txt\r\n"});
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

/// One of the lists, as it was read and as it is to be.
struct ListChange {
    std::string path;
    std::string old;
    std::string changed;
    bool is_done = false; // a run that was cut short has changed it already
};

/// What a run comes to.
struct NewsRun {
    std::string body;
    std::vector<ListChange> lists; // first that of the site

    bool IsDone() const
    {
        return std::ranges::all_of(lists, [](const ListChange& list) { return list.is_done; });
    }
};

/// A home page list gets the bang line.
void ChangeHomeList(ListChange& list, const std::string& bang_line)
{
    list.is_done = HasAfter(list.old, kNewsLineMark, bang_line);
    InsertAfter(list.changed, kNewsLineMark, bang_line);
}

/// A site's list gets the bang line and the entry.
void ChangeSiteList(ListChange& list, const std::string& bang_line, const std::string& head)
{
    list.is_done =
        HasAfter(list.old, kNewsLineMark, bang_line) && HasAfter(list.old, kNewsEntryMark, head);
    ReplaceEach(list.changed, kNewsEntryEnd, "");
    InsertAfter(list.changed, kNewsLineMark, bang_line);
    InsertAfter(list.changed, kNewsEntryMark, head + std::string(kNewsEntryEnd));
}

ListChange ReadList(Files& files, const std::string& path)
{
    std::string content =
        ReadNeeded(files, path,
                   "The news needs this page list: write it, with a line \";inserthere1\" for the "
                   "news lines and a line \";inserthere2\" for the pages.");
    return {path, content, content};
}

/// Whether both lists are one file, by whatever path: a site whose home folder is its own.
bool IsOneList(Files& files, const NewsPaths& paths)
{
    const std::string place = files.PlaceOf(files.Open(paths.site_list));
    return !place.empty() && place == files.PlaceOf(files.Open(paths.home_list));
}

/// Both lists, read and changed. One file for both gets what each would get, the home list first:
/// the bang line twice.
std::vector<ListChange> ChangedLists(Files& files, const NewsPaths& paths,
                                     const std::string& bang_line, const std::string& head)
{
    std::vector<ListChange> lists{ReadList(files, paths.site_list)};
    if (!paths.home_list.empty()) {
        if (!IsOneList(files, paths))
            lists.push_back(ReadList(files, paths.home_list));
        ChangeHomeList(lists.back(), bang_line);
    }
    ChangeSiteList(lists.front(), bang_line, head);
    return lists;
}

/// The article as its file has it, without the bang line.
std::string BodyText(const NewsDesk& desk, const NewsItem& item, const SitePreset& preset)
{
    std::string text = ArticleText(item);
    if (!item.as_is)
        text = cleanme(text);
    if (preset.highlight)
        Highlight(text, desk.settings.highlight_name);
    return text;
}

/// Reads the lists and works everything out.
NewsRun makehtml(Files& files, const NewsDesk& desk, const NewsItem& item, const SitePreset& preset,
                 const NewsPaths& paths)
{
    const std::string bang = "!!1[" + SourceString(item) + "]";
    const std::string bang_line = Joined({bang, kCrLf});
    NewsRun run;
    run.lists = ChangedLists(files, paths, bang_line, EntryHead(item, bang));
    run.body = BodyText(desk, item, preset);
    if (FindNewsMark(run.lists.front().old, kNewsLineMark) == NewsMark::absent)
        run.body.insert(0, bang_line);
    return run;
}

/// Writes the article and then the lists, each as long as it is what was read: a run that is cut
/// short leaves no entry without its article, and can be started again.
void WriteRun(Files& files, const NewsPaths& paths, const NewsRun& run)
{
    // All places are found fit before anything is written.
    const OutputFile body = files.Open(paths.body);
    std::vector<OutputFile> places;
    for (const ListChange& list : run.lists)
        places.push_back(files.Open(list.path));
    files.CommitSource(body, run.body, {Expectation::Kind::nothing});
    for (std::size_t i = 0; i < places.size(); ++i)
        files.CommitSource(places[i], run.lists[i].changed,
                           {Expectation::Kind::content, run.lists[i].old});
}

/// Says what a run has done with its article and its lists.
void TellRun(Reporter& reporter, const NewsPaths& paths, const NewsRun& run)
{
    std::vector<NewsList> lists;
    for (const ListChange& list : run.lists)
        lists.push_back({list.path, list.old, !lists.empty()});
    TellNews(reporter, paths.body, lists);
}

/// Goes on with a run that was cut short when it had put the article into place. What it had done
/// may have reached the disk or not.
void FinishRun(Files& files, const NewsPaths& paths, const NewsRun& run)
{
    files.KeepSource(paths.body, run.body);
    for (const ListChange& list : run.lists) {
        if (list.is_done)
            files.KeepSource(list.path, list.old);
        else
            files.ReplaceSource(list.path, list.old, list.changed);
    }
}

/// The folders that a run writes into, for itself alone; always in the same order, whatever they
/// are called, so that no two runs wait for each other.
std::vector<std::unique_ptr<FolderLock>> LockFolders(Files& files, const NewsPaths& paths)
{
    std::map<std::string, std::string> folders; // by the places of the files
    for (const std::string& path : {paths.body, paths.site_list, paths.home_list}) {
        const std::string folder(FolderOf(AbsolutePath(path, files.CurrentDirectory())));
        if (!path.empty() && files.FolderExists(folder))
            folders.try_emplace(files.PlaceOf(files.Open(path)), folder);
    }
    std::vector<std::unique_ptr<FolderLock>> locks;
    locks.reserve(folders.size());
    for (const auto& [place, folder] : folders)
        locks.push_back(files.LockFolder(folder));
    return locks;
}

/// The run that has written this article, as far as it came; none when the article is another one.
std::optional<NewsRun> EarlierRun(Files& files, const NewsDesk& desk, const NewsItem& item,
                                  const SitePreset& preset, const NewsPaths& paths)
{
    const bool has_lists = files.FileExists(paths.site_list) &&
                           (paths.home_list.empty() || files.FileExists(paths.home_list));
    if (!has_lists)
        return std::nullopt;
    NewsRun run = makehtml(files, desk, item, preset, paths);
    if (files.ReadFile(paths.body) != run.body)
        return std::nullopt;
    return run;
}

/// Composes an item whose article is there already. Returns whether anything was left to do.
bool TakeUp(Machine& machine, const NewsDesk& desk, const NewsItem& item, const SitePreset& preset,
            const NewsPaths& paths)
{
    const std::optional<NewsRun> run = EarlierRun(machine.files, desk, item, preset, paths);
    const bool is_left = run && !run->IsDone();
    if (is_left)
        desk.switchto(preset.folder);
    if (run)
        FinishRun(machine.files, paths, *run);
    if (is_left)
        TellRun(machine.reporter, paths, *run);
    else
        machine.reporter.reportmsg("That file already exists. Try Again.");
    return is_left;
}

bool newsdoit(Machine& machine, const NewsDesk& desk, const NewsItem& item,
              const SitePreset& preset)
{
    Files& files = machine.files;
    const NewsPaths paths = PathsOf(preset, item.file_name);
    if (IsScratchSite(preset)) {
        files.MakeFolder(preset.folder);
        files.MakeFolder(preset.folder + "txt");
    }
    const auto locks = LockFolders(files, paths);
    if (!files.FileExists(paths.body)) {
        desk.switchto(preset.folder);
        const NewsRun run = makehtml(files, desk, item, preset, paths);
        WriteRun(files, paths, run);
        TellRun(machine.reporter, paths, run);
    } else if (!TakeUp(machine, desk, item, preset, paths)) {
        return false;
    }
    if (!paths.home_list.empty())
        for (const std::string& path : {paths.body, paths.site_list, paths.home_list})
            machine.programs.Start({.command = desk.editor_command, .file = path, .line = 1});
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
