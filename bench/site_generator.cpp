#include "bench/site_generator.h"

#include <cstddef>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace kiv {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr std::array<std::string_view, 48> kWords{
    "the",    "and",    "of",       "in",     "a",        "to",       "was",     "with",
    "from",   "by",     "for",      "on",     "harbour",  "keeper",   "lantern", "winter",
    "summer", "letter", "village",  "ferry",  "fishing",  "captain",  "island",  "church",
    "school", "bridge", "river",    "street", "market",   "railway",  "museum",  "photograph",
    "diary",  "family", "daughter", "years",  "morning",  "storm",    "stone",   "wooden",
    "built",  "opened", "painted",  "found",  "remember", "restored", "old",     "early"};

constexpr std::array<std::string_view, 8> kTopics{"harbour", "lighthouse", "ferry",  "school",
                                                  "market",  "railway",    "church", "island"};

constexpr std::array<std::string_view, 6> kTitles{
    "A Walk through the ", "Letters from the ",       "The Keepers of the ",
    "Notes & Sources: ",   "Photographs of the Old ", "What We Know about the "};

// What opens and closes a line of prose. Most lines of a body have no tag at all.
struct Wrapping {
    std::string_view open;
    std::string_view close;
};
constexpr std::array<Wrapping, 12> kWrappings{{
    {"", ""},
    {"", ""},
    {"", ""},
    {"", ""},
    {"", "<br>"},
    {"<p>", ""},
    {"<p>", "</p>"},
    {"<li>", "</li>"},
    {"<b>1887.</b> ", ""},
    {"<font size=\"2\">", "</font>"},
    {"<td valign=\"top\">", "</td>"},
    {"<img src=\"images/quay.jpg\" width=\"120\" alt=\"\"> ", ""},
}};

class Random {
  public:
    explicit Random(unsigned seed) : numbers_(seed) {}

    // A number from 0 to `count` - 1. The standard's distributions differ between libraries, a
    // remainder does not.
    std::size_t Below(std::size_t count) { return numbers_() % count; }

    template <class Container>
    const auto& OneOf(const Container& items)
    {
        return items[Below(items.size())];
    }

  private:
    std::mt19937 numbers_;
};

std::string PageStem(int page)
{
    if (page == 1)
        return "index";
    const std::size_t topic = static_cast<std::size_t>(page) % kTopics.size();
    return std::string(kTopics[topic]) + "-" + std::to_string(page);
}

std::string PageTitle(int page)
{
    const auto number = static_cast<std::size_t>(page);
    return std::string(kTitles[number % kTitles.size()]) +
           std::string(kTopics[number % kTopics.size()]) + ", " + std::to_string(page);
}

// `start` filled up with words, then `end`: 40 to 120 characters as long as both ends together are
// shorter than that.
std::string Prose(Random& random, std::string start, std::string_view end)
{
    const std::size_t wanted = 42 + random.Below(66);
    bool first = true;
    while (start.size() + end.size() < wanted) {
        if (!first)
            start += ' ';
        start += random.OneOf(kWords);
        first = false;
        if (random.Below(12) == 0)
            start += ',';
    }
    return start.append(end);
}

std::string PlainLine(Random& random)
{
    const Wrapping& wrapping = random.OneOf(kWrappings);
    return Prose(random, std::string(wrapping.open), wrapping.close);
}

std::string ConstructLine(Random& random, int pages)
{
    const int other = static_cast<int>(random.Below(static_cast<std::size_t>(pages))) + 1;
    switch (random.Below(10)) {
    case 0:
        return Prose(random, "<p>This page, <i>@TITLE</i>, tells of ", "");
    case 1:
        return Prose(random, "", " <a href=\"@NEXT\">@NEXTTITLE</a>");
    case 2:
        return Prose(random, "<p>Courtesy of @@1: ", "");
    case 3:
        return Prose(random, "Opening hours: call %%2 ", "<br>");
    case 4:
        return Prose(random, "Write to !!mailto[archive@example.org!] ", "");
    case 5:
        return Prose(random, "See !!pop[http://www.example.org/maps/!] ", "");
    case 6:
        return Prose(random, "", " (note {{" + std::to_string(other) + "}})");
    case 7:
        return Prose(random, "Home {} Archive {} ", "");
    default:
        return Prose(random, "", " ??1[" + PageStem(other) + "|" + PageTitle(other) + "]");
    }
}

void WriteLine(std::ostream& out, std::string_view line)
{
    out << line << kLineEnd;
}

void WritePage(std::ostream& out, const SiteSize& size, int page, int edition)
{
    // Each page has its own row of numbers, so that a change of one page leaves the others alone.
    Random random(static_cast<unsigned>(page));
    int line = 2;
    WriteLine(out, "@FILE = " + PageStem(page) + ".htm");
    WriteLine(out, "@TITLE = " + PageTitle(page));
    if (page % 3 == 1) {
        line += 2;
        WriteLine(out, "@KEYWORDS = history,island,archive," + PageStem(page));
        WriteLine(out,
                  "@DESCRIPTION = " + Prose(random, "Page " + std::to_string(page) + ": ", "."));
    }
    if (page == size.pages / 2 + 1) {
        ++line;
        WriteLine(out,
                  "<p>This page stands here in its edition " + std::to_string(edition) + ".</p>");
    }
    for (; line < size.lines_a_page; ++line)
        WriteLine(out,
                  random.Below(10) == 0 ? ConstructLine(random, size.pages) : PlainLine(random));
}

void WritePageList(std::ostream& out, const SiteSize& size, int edition)
{
    WriteLine(out, ";The pages of the island's archive");
    WriteLine(out, "@ROOT = http://www.example.org/");
    WriteLine(out, "@@1 = The Island Archive Society");
    WriteLine(out, "%%2 = (555) 010-0199");
    WriteLine(out, "??1 = <b>!2</b>|<a href=\"!1.htm\">!2</a>");
    for (int page = 1; page <= size.pages; ++page)
        WritePage(out, size, page, edition);
}

using Lines = std::vector<std::string>;

std::string StyleRule(std::size_t number)
{
    constexpr std::array<std::string_view, 4> kRules{
        " {color:#333366;background-color:#ffffff;}",
        " {margin:4px 0 12px 0;padding:2px 6px;border:1px solid #cccccc;}",
        " {font-family:verdana,geneva,sans-serif;font-size:11px;}",
        " a:hover {color:#cc0000;text-decoration:underline;}"};
    return ".part" + std::to_string(number) + std::string(kRules[number % kRules.size()]);
}

std::string FooterLink(std::size_t number)
{
    const std::string_view topic = kTopics[number % kTopics.size()];
    return "<td class=\"part" + std::to_string(number) + "\"><a href=\"/" + std::string(topic) +
           "/index.htm\">All about the " + std::string(topic) + "</a></td>";
}

// The lines before the body marker, `count` of them, the style sheet as long as that takes.
Lines TemplateHead(std::size_t count)
{
    Lines lines{"<html>",
                "<head>",
                "<title>@TITLE</title>",
                "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">",
                "<META NAME=\"keywords\" CONTENT=\"@KEYWORDS\">",
                "<META NAME=\"description\" CONTENT=\"The Island Archive: @QTITLE\">",
                "<style>",
                "body {color:black;background:white;margin:0;}",
                "@media print {",
                "   .menu {visibility:hidden}",
                "}"};
    const Lines below{
        "</style>",
        "</head>",
        "<body>",
        "<table width=\"100%\" cellspacing=\"0\" cellpadding=\"4\" class=\"menu\"><tr>",
        "<td><a href=\"index.htm\">Home</a> | <a href=\"contents.htm\">Contents</a></td>",
        "=2=<td align=\"right\"><a href=\"@PREV\">Back to @PREVTITLE</a></td>",
        "<td align=\"right\"><a href=\"@NEXT\">On to @NEXTTITLE</a></td>",
        "</tr></table>",
        "<h1>@TITLE</h1>"};
    for (std::size_t rule = 1; lines.size() + below.size() < count; ++rule)
        lines.push_back(StyleRule(rule));
    lines.insert(lines.end(), below.begin(), below.end());
    return lines;
}

// The lines after the body marker, `count` of them.
Lines TemplateTail(std::size_t count, bool lists_all_pages)
{
    Lines lines{"<p><a href=\"@PREV\">Previous</a> | <a href=\"@NEXT\">Next</a></p>"};
    if (lists_all_pages) {
        lines.emplace_back("<ul class=\"contents\">");
        lines.emplace_back("<!--TOC HERE-->");
        lines.emplace_back("</ul>");
    }
    lines.emplace_back("<table width=\"100%\" class=\"foot\">");
    const Lines below{"</table>",
                      "<p class=\"small\">Copyright 1998-@YEAR @@1. Page @XOFY_X of @XOFY_Y.</p>",
                      "</body>", "</html>"};
    for (std::size_t cell = 1; lines.size() + below.size() < count; ++cell)
        lines.push_back(cell % 4 == 1 ? "</tr><tr valign=\"top\">" : FooterLink(cell));
    lines.insert(lines.end(), below.begin(), below.end());
    return lines;
}

void WriteTemplate(std::ostream& out, const SiteSize& size)
{
    const auto count = static_cast<std::size_t>(size.template_lines);
    const std::size_t head = count / 2 - 1;
    for (const std::string& line : TemplateHead(head))
        WriteLine(out, line);
    WriteLine(out, "<!--BODY HERE-->");
    for (const std::string& line : TemplateTail(count - head - 1, size.lists_all_pages))
        WriteLine(out, line);
}

std::ofstream Create(const std::filesystem::path& path)
{
    std::ofstream out;
    out.exceptions(std::ios::badbit | std::ios::failbit);
    out.open(path, std::ios::binary | std::ios::trunc);
    return out;
}

} // namespace

const SiteSize* FindSiteSize(std::string_view name)
{
    for (const SiteSize& size : kSiteSizes)
        if (size.name == name)
            return &size;
    return nullptr;
}

void WriteSite(const SiteSize& size, const std::filesystem::path& dir, int edition)
{
    std::ofstream page_list = Create(dir / "_html.txt");
    WritePageList(page_list, size, edition);
    page_list.close();
    std::ofstream page_template = Create(dir / "_template.txt");
    WriteTemplate(page_template, size);
    page_template.close();
}

} // namespace kiv
