#include "utilities/title_grab.h"

#include "platform/drive_path.h"
#include "platform/fixed_table.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/clean_text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

namespace {

struct GrabbedPage {
    std::string file; // in lower case
    std::string title;
};
using GrabbedPages = FixedTable<GrabbedPage, 1, 1000>;

constexpr std::string_view kOpening = "<title>";
constexpr std::string_view kClosing = "</title>";
constexpr std::string_view kUntitled = "Untitled";

/// The text between the title tags of a page, its lines joined with blanks.
std::string TitleIn(std::string_view page, const std::string& path)
{
    std::string_view line;
    std::size_t opening = npos;
    while (opening == npos) {
        if (page.empty())
            return std::string(kUntitled);
        line = TakeLine(page);
        opening = FindNoCase(line, kOpening);
    }
    const std::size_t begin = opening + kOpening.size();
    std::string text(line);
    // A line alone is searched, not the joined text: the tag holds no blank, so no join makes one.
    std::size_t closing = FindNoCase(line, kClosing);
    while (closing == npos) {
        if (page.empty())
            return std::string(kUntitled);
        line = TakeLine(page);
        closing = FindNoCase(line, kClosing);
        if (closing != npos)
            closing += text.size() + 1;
        Append(text, {" ", line});
    }
    if (closing < begin)
        throw RunError(ErrorKind::invalid_argument, "the title ends before it begins", {path},
                       "Put <title> before </title> in this page.");
    return text.substr(begin, closing - begin);
}

/// The path of a listed page: its name alone might look like a path with a drive.
std::string PathOf(const Files& files, std::string_view name)
{
    return WithSeparator(files.CurrentDirectory()).append(name);
}

void grab_title_of(Files& files, const std::string& file, GrabbedPage& page)
{
    const std::string path = PathOf(files, file);
    page.file = LowerCase(file);
    page.title = TitleIn(files.ReadFile(path), path);
}

/// Adds the lines of a page, tabs and runs of blanks as one blank. The line with "<body" is still
/// outside the body and the one with "</body" inside: the format wants it so.
void CopyLines(std::string& list, std::string_view page, bool body_only)
{
    std::string line;
    for (bool inside = false; !page.empty();) {
        line = TakeLine(page);
        std::replace(line.begin(), line.end(), '\t', ' ');
        CollapseBlanks(line);
        if (inside || !body_only)
            Append(list, {line, kCrLf});
        if (Contains(line, "<body"))
            inside = true;
        if (Contains(line, "</body"))
            inside = false;
    }
}

void WriteGrabbedTitles(Machine& machine, const GrabbedPages& pages, int count, bool with_redirect,
                        GrabFlags& flags)
{
    const GrabFlags grab = std::exchange(flags, {});
    std::string list;
    for (int n = 1; n <= count; ++n) {
        const GrabbedPage& page = pages[n];
        Append(list, {"@file = ", page.file, "\r\n@title = ", page.title, kCrLf});
        if (with_redirect)
            Append(list, {"@redirect|..\\", page.file, kCrLf});
        if (grab.grab_all)
            CopyLines(list, machine.files.ReadFile(PathOf(machine.files, page.file)),
                      grab.grab_trimmed);
        list.append(kCrLf);
    }
    machine.files.WriteFile(kGrabbedTitlesFile, list);
}

} // namespace

void grab_titles(Machine& machine, bool with_redirect, GrabFlags& flags)
{
    Files& files = machine.files;
    std::vector<FileName> names = FilesToWorkOn(machine, "*.htm*");
    for (FileName& name : FilesToWorkOn(machine, "*.asp"))
        names.push_back(std::move(name));
    if (names.empty()) {
        machine.reporter.reportmsg("Empty directory!");
        return;
    }
    GrabbedPages pages(
        "page of the title grab",
        "A title grab takes 1000 pages: move some into another folder while you grab.");
    const int all = static_cast<int>(names.size());
    int count = 0;
    for (const FileName& name : names) {
        ++count;
        grab_title_of(files, name.text, pages[count]);
        machine.reporter.Step(count, all);
    }
    WriteGrabbedTitles(machine, pages, count, with_redirect, flags);
    machine.reporter.Status(with_redirect ? "Grab titles && redirect done" : "Grab titles done");
}

} // namespace kiv
