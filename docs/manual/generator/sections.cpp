#include "docs/manual/generator/sections.h"

#include "docs/manual/generator/chapter.h"
#include "docs/manual/generator/prose.h"
#include "text/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kiv::manual {

namespace {

namespace fs = std::filesystem;

/// The heading of a line that is one; "" of another.
std::string_view HeadingOf(std::string_view line)
{
    for (const std::string_view mark : {"# ", "## "})
        if (line.starts_with(mark))
            return line.substr(mark.size());
    return {};
}

/// Adds each `code` of a line, inside links and strong words as well.
void AddCodes(std::vector<std::string>& codes, std::string_view line)
{
    for (const Span& span : Spans(line))
        if (span.kind == SpanKind::code)
            codes.emplace_back(span.text);
        else if (span.kind != SpanKind::plain)
            AddCodes(codes, span.text);
}

void Append(std::string& text, std::string_view more, std::string_view between)
{
    if (!more.empty())
        text.append(text.empty() ? "" : between).append(more);
}

void AddText(PageSection& section, std::string_view line)
{
    AddCodes(section.codes, line);
    Append(section.text, Trim(InlineText(line)), " ");
}

/// What stands alone on the page ends like a sentence where it would run into what follows.
void AddAlone(PageSection& section, std::string_view text)
{
    AddText(section, text);
    if (!section.text.empty() && std::string_view(".:;?!").find(section.text.back()) == npos)
        section.text += '.';
}

void AddRow(PageSection& section, std::string_view row)
{
    std::string line;
    for (const std::string& cell : Cells(row))
        Append(line, Trim(cell), " | ");
    AddAlone(section, line);
}

void AddLine(std::vector<PageSection>& sections, std::string_view line)
{
    if (const std::string_view heading = HeadingOf(line); !heading.empty())
        sections.push_back({InlineText(heading), HeadingId(heading), {}, {}});
    else if (line.starts_with("| "))
        AddRow(sections.back(), line);
    else
        AddText(sections.back(), line);
}

std::string FileText(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The names and titles of a page list.
std::vector<ManualPage> ListedPages(const std::string& list)
{
    constexpr std::string_view kFile = "@FILE = ";
    constexpr std::string_view kTitle = "@TITLE = ";
    std::vector<ManualPage> pages;
    for (std::string_view rest = list; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        if (line.starts_with(kFile))
            pages.push_back({std::string(line.substr(kFile.size())), {}, {}, {}});
        else if (line.starts_with(kTitle) && !pages.empty())
            pages.back().title = line.substr(kTitle.size());
    }
    return pages;
}

void RefuseUnlisted(const fs::path& chapters, const std::vector<ManualPage>& pages)
{
    for (const fs::directory_entry& entry : fs::directory_iterator(chapters))
        if (entry.path().extension() == ".txt" &&
            std::none_of(pages.begin(), pages.end(),
                         [&](const ManualPage& page) { return page.name == entry.path().stem(); }))
            throw std::runtime_error("no page of _html.txt is made of " + entry.path().string());
}

} // namespace

std::vector<PageSection> SectionsOf(std::string_view chapter)
{
    std::vector<PageSection> sections(1);
    for (const Block& block : ReadChapter(chapter)) {
        for (const std::string& line : block.prose)
            AddLine(sections, line);
        for (const Example& example : block.example)
            AddAlone(sections.back(), example.title);
    }
    std::erase_if(sections, [](const PageSection& section) {
        return section.heading.empty() && section.text.empty();
    });
    return sections;
}

std::vector<ManualPage> ReadManual(const std::string& folder)
{
    const fs::path chapters = fs::path(folder) / "chapters";
    std::vector<ManualPage> pages = ListedPages(FileText(fs::path(folder) / "_html.txt"));
    RefuseUnlisted(chapters, pages);
    for (ManualPage& page : pages) {
        page.chapter = FileText(chapters / (page.name + ".txt"));
        page.sections = SectionsOf(page.chapter);
    }
    return pages;
}

} // namespace kiv::manual
