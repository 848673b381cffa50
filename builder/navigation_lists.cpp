#include "builder/navigation_lists.h"

#include "builder/build_state.h"
#include "builder/write_line.h"
#include "platform/site_files.h"
#include "text/text.h"

#include <string>
#include <string_view>

namespace kiv {

namespace {

constexpr std::string_view kSelect =
    R"+(<SELECT onChange="window.open(this.options[this.selectedIndex].value,'_top')">)+";
constexpr std::string_view kSeparator = "====================";

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

/// Adds the lines of a site map file. A line that begins with "<" is structure; any other lacks its
/// opening, in which `folder` stands before the page.
void AppendSiteMap(std::string& map, Files& files, const std::string& path, std::string_view folder)
{
    const std::string bytes = files.ReadFile(path);
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        if (!line.starts_with('<'))
            map.append("<li><a href=\"").append(folder);
        WriteLine(map, line);
    }
}

void AppendGroupMap(std::string& map, Files& files, std::string_view group)
{
    if (group == "press" || group == "news") {
        map.append("<li><a href=\"").append(group).append("\">Click for NEWS section</a>\r\n");
        return;
    }
    const std::string folder = std::string(group) + "/";
    AppendSiteMap(map, files, folder + std::string(kSiteMapFile), folder);
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

void WritePageDropDown(Build& build)
{
    std::string& output = build.state.output;
    const std::string& current = build.CurrentRecord().file;
    output.append("<table cellspacing=0 cellpadding=0 border=0><tr><FORM name=\"selectone\"><td>");
    WriteLine(output, kSelect);
    ForEachPage(build.state, 1, [&](const PageRecord& page) {
        output.append("<option value=\"").append(page.file);
        output.append(page.file == current ? "\" selected>" : "\">");
        WriteLine(output, page.title);
    });
    WriteLine(output, "</SELECT></td></FORM></tr></table>");
}

void WritePageList(Build& build)
{
    BuildState& state = build.state;
    if (!state.page_list_is_valid) {
        state.page_list.clear();
        ForEachPage(state, 1, [&](const PageRecord& page) {
            if (page.noindex)
                return;
            state.page_list.append("<li> <a href=\"").append(page.file).append("\">");
            state.page_list.append(page.title).append("</a>\r\n");
        });
        state.page_list_is_valid = true;
    }
    state.output.append(state.page_list);
}

void WriteSiteMap(Build& build)
{
    Files& files = build.machine.files;
    std::string map;
    AppendSiteMap(map, files, std::string(kSiteMapFile), "");
    const std::string groups = files.ReadFile(kGroupFile);
    for (std::string_view rest = groups; !rest.empty();) {
        const std::string_view group = TakeLine(rest);
        if (!group.empty())
            AppendGroupMap(map, files, group);
    }
    std::string& output = build.state.output;
    WriteLine(output, "<ul class=\"sitemap\">");
    WriteLine(output, map); // the map ends its last line itself, so an empty line follows
    WriteLine(output, "</ul>");
}

void WriteNavigationFiles(Build& build)
{
    Files& files = build.machine.files;
    files.WriteFile(kTocFile, TocText(build.state));
    files.WriteFile(kSiteMapFile, SiteMapText(build.state));
}

} // namespace kiv
