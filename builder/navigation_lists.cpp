#include "builder/navigation_lists.h"

#include "builder/build_state.h"
#include "builder/write_line.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kSelect =
    R"+(<SELECT onChange="window.open(this.options[this.selectedIndex].value,'_top')">)+";
constexpr std::string_view kSeparator = "====================";

constexpr std::string_view kDropDownMark = "<!--DROPDOWN HERE-->";
constexpr std::string_view kListMark = "<!--TOC HERE-->";
constexpr std::string_view kSiteMapMark = "<!--SITEMAPHERE-->";

// What to do when a file is missing that a site map is made of.
constexpr std::string_view kHowToGetOwnMap =
    "A build writes this file at its end: build once without the line <!--SITEMAPHERE-->, then put "
    "the line back.";
constexpr std::string_view kHowToGetMemberMap =
    "A build writes this file: build that folder first, or take it out of _group.txt.";
constexpr std::string_view kHowToGetGroup =
    "The site map needs this file: write into it the folders of the group, one a line, or nothing.";

/// Tells the trace which page the line written last stands for.
void TellPage(Tracer* tracer, std::string_view mark, int page)
{
    if (tracer != nullptr) [[unlikely]]
        tracer->PutWritten(mark, tracer->PageText(page),
                           tracer->Known().Field(page, PageField::file).place);
}

/// Calls `write(record)` for pages `first` to N.
template <typename Write>
void ForEachPage(const BuildState& state, int first, Write write)
{
    for (int page = first; page <= state.PageCount; ++page)
        write(state.PageTable[page]);
}

/// The link of a page, from the file on: `file">title</A></LI>`.
void WriteLinkRest(std::string& output, const PageRecord& page)
{
    output.append(page.file).append("\">").append(page.title).append("</A></LI>\r\n");
}

void AppendListItem(std::string& list, const PageRecord& page)
{
    if (page.noindex)
        return;
    list.append("<li> <a href=\"").append(page.file).append("\">");
    list.append(page.title).append("</a>\r\n");
}

/// Writes the list of pages item by item, so that the trace knows which item is which page.
void TellPageList(Build& build, Tracer& tracer)
{
    int number = 0;
    ForEachPage(build.state, 1, [&](const PageRecord& page) {
        ++number;
        AppendListItem(build.state.output, page);
        if (!page.noindex)
            TellPage(&tracer, kListMark, number);
    });
}

/// The site map while it is put together.
struct SiteMap {
    std::string text;
    Tracer* tracer = nullptr; // wants to know where each line is from
    struct Line {
        std::string file; // as it was read
        int number;       // 1-based
        std::size_t end;  // behind it in `text`
    };
    std::vector<Line> lines; // only where there is a tracer
};

/// Adds the lines of a site map file. A line that begins with "<" is structure; any other lacks its
/// opening, in which `folder` stands before the page. When there is no such file, the error says
/// `what_to_do`.
void AppendSiteMap(SiteMap& map, Files& files, const std::string& path, std::string_view folder,
                   std::string_view what_to_do)
{
    const std::string bytes = ReadNeeded(files, path, what_to_do);
    if (map.tracer != nullptr) [[unlikely]]
        map.tracer->TellSource(AbsolutePath(path, files.CurrentDirectory()));
    int number = 0;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        if (!line.starts_with('<'))
            map.text.append("<li><a href=\"").append(folder);
        WriteLine(map.text, line);
        ++number;
        if (map.tracer != nullptr) [[unlikely]]
            map.lines.push_back(
                {AbsolutePath(path, files.CurrentDirectory()), number, map.text.size()});
    }
}

void AppendGroupMap(SiteMap& map, Files& files, std::string_view group)
{
    if (group == "press" || group == "news") {
        map.text.append("<li><a href=\"").append(group);
        map.text.append("\">Click for NEWS section</a>\r\n");
        if (map.tracer != nullptr) [[unlikely]]
            map.lines.push_back({{}, 0, map.text.size()});
        return;
    }
    const std::string folder = std::string(group) + "/";
    AppendSiteMap(map, files, folder + std::string(kSiteMapFile), folder, kHowToGetMemberMap);
}

/// Tells the trace where the lines of a site map are from, which is the end of the page so far.
void TellSiteMap(std::string_view written, const SiteMap& map, Tracer& tracer)
{
    const std::size_t head = written.find('\n') + 1;
    tracer.Put(written.substr(0, head), kSiteMapMark, "the site map begins", {});
    std::size_t done = 0;
    for (const SiteMap::Line& line : map.lines) {
        const SourceSpan from{line.file, line.number, line.number};
        tracer.Put(written.substr(head + done, line.end - done), kSiteMapMark,
                   line.file.empty() ? "the news section of the group"
                                     : "from " + tracer.PlaceText(from),
                   from, !line.file.empty());
        done = line.end;
    }
    tracer.Put(written.substr(head + done), kSiteMapMark, "the site map ends", {});
}

/// Lines of `_toc.txt` that use the reference `mark`, one a page.
void AppendReferences(std::string& toc, const BuildState& state, std::string_view mark)
{
    ForEachPage(state, 1, [&](const PageRecord& page) {
        toc.append(mark).append(Before(page.file, '.')).append("|").append(page.title);
        toc.append("]\r\n");
    });
}

void AppendSelectForm(std::string& toc, const BuildState& state)
{
    toc.append("<FORM name=\"selectone\">").append(kSelect);
    WriteLine(toc, "<OPTION value=\"\">Choose one ...");
    ForEachPage(state, 1, [&](const PageRecord& page) {
        toc.append("<option value=\"").append(page.file).append("\">");
        WriteLine(toc, page.title);
    });
    WriteLine(toc, "</SELECT></FORM>");
}

std::string TocText(const BuildState& state)
{
    std::string toc;
    std::size_t size = 1000; // for what stands between the lists
    ForEachPage(state, 1, [&](const PageRecord& page) {
        constexpr std::size_t kLists = 5;
        size += kLists * (page.file.size() + page.title.size() + 20);
    });
    toc.reserve(size);
    if (!state.style_sheet.empty()) {
        WriteLine(toc, state.style_sheet); // it ends its last line itself, so an empty line follows
        WriteLine(toc, kSeparator);
    }
    AppendReferences(toc, state, "??1[");
    WriteLine(toc, kSeparator);
    AppendReferences(toc, state, "!!9[");
    WriteLine(toc, kSeparator);
    ForEachPage(state, 1, [&](const PageRecord& page) {
        toc.append("<LI><A HREF=\"");
        WriteLinkRest(toc, page);
    });
    WriteLine(toc, kSeparator);
    AppendSelectForm(toc, state);
    WriteLine(toc, kSeparator);
    ForEachPage(state, 1, [&](const PageRecord& page) {
        toc.append("<A HREF=\"").append(page.file).append("\">").append(page.title);
        toc.append("</A>\r\n");
    });
    return toc;
}

std::string SiteMapText(const BuildState& state)
{
    std::string map;
    WriteLinkRest(map, state.PageTable[1]); // the head, noindex or not
    WriteLine(map, "<ul class=\"sub\">");
    ForEachPage(state, 2, [&](const PageRecord& page) {
        if (!page.noindex)
            WriteLinkRest(map, page);
    });
    WriteLine(map, "</ul>");
    return map;
}

} // namespace

void WritePageDropDown(Build& build, Tracer* tracer)
{
    std::string& output = build.state.output;
    const std::string& current = build.CurrentRecord().file;
    int number = 0;
    output.append("<table cellspacing=0 cellpadding=0 border=0><tr><FORM name=\"selectone\"><td>");
    WriteLine(output, kSelect);
    if (tracer != nullptr) [[unlikely]]
        tracer->PutWritten(kDropDownMark, "the drop-down of all pages begins", {});
    ForEachPage(build.state, 1, [&](const PageRecord& page) {
        output.append("<option value=\"").append(page.file);
        output.append(page.file == current ? "\" selected>" : "\">");
        WriteLine(output, page.title);
        TellPage(tracer, kDropDownMark, ++number);
    });
    WriteLine(output, "</SELECT></td></FORM></tr></table>");
    if (tracer != nullptr) [[unlikely]]
        tracer->PutWritten(kDropDownMark, "the drop-down of all pages ends", {});
}

void WritePageList(Build& build, Tracer* tracer)
{
    BuildState& state = build.state;
    if (tracer != nullptr) [[unlikely]]
        return TellPageList(build, *tracer);
    if (!state.page_list_is_valid) {
        state.page_list.clear();
        ForEachPage(state, 1,
                    [&](const PageRecord& page) { AppendListItem(state.page_list, page); });
        state.page_list_is_valid = true;
    }
    state.output.append(state.page_list);
}

void WriteSiteMap(Build& build, Tracer* tracer)
{
    SiteMap map;
    map.tracer = tracer;
    Files& files = build.machine.files;
    AppendSiteMap(map, files, std::string(kSiteMapFile), "", kHowToGetOwnMap);
    const std::string groups = ReadNeeded(files, kGroupFile, kHowToGetGroup);
    for (std::string_view rest = groups; !rest.empty();) {
        const std::string_view group = TakeLine(rest);
        if (!group.empty())
            AppendGroupMap(map, files, group);
    }
    std::string& output = build.state.output;
    const std::size_t start = output.size();
    WriteLine(output, "<ul class=\"sitemap\">");
    WriteLine(output, map.text); // the map ends its last line itself, so an empty line follows
    WriteLine(output, "</ul>");
    if (tracer != nullptr) [[unlikely]]
        TellSiteMap(std::string_view(output).substr(start), map, *tracer);
}

void WriteNavigationFiles(Build& build)
{
    Files& files = build.machine.files;
    files.WriteFile(kTocFile, TocText(build.state));
    files.WriteFile(kSiteMapFile, SiteMapText(build.state));
}

} // namespace kiv
