#include "shell/new_site_texts.h"

#include "text/joined_text.h"

namespace kiv {

// clang-format off

const std::string_view kNewStyleSheet = R"txt(/* Colours and sizes: change them here. */
:root {
  color-scheme: light dark;
  --paper: #fbfaf7;
  --card: #ffffff;
  --text: #23282d;
  --quiet: #5d666f;
  --line: #dcd8cf;
  --accent: #b3541e;
  --link: #1f5f8b;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #16191d;
    --card: #1f2429;
    --text: #e6e3dc;
    --quiet: #a2a9b0;
    --line: #363d44;
    --accent: #f0a35e;
    --link: #8ec5ec;
  }
}

/* The page. */
* { box-sizing: border-box; }
body {
  margin: 0 auto;
  max-width: 46rem;
  padding: 0 1.25rem;
  background: var(--paper);
  color: var(--text);
  font: 1.0625rem/1.65 Georgia, "Times New Roman", serif;
  overflow-wrap: break-word;
}
a { color: var(--link); text-underline-offset: .15em; }
a:hover { color: var(--accent); }
code { font: .9em Consolas, Menlo, monospace; background: var(--card); border: 1px solid var(--line); border-radius: 3px; padding: .05em .3em; }
img { max-width: 100%; height: auto; }

/* Its head: the name and the menu. */
header {
  display: flex;
  flex-wrap: wrap;
  align-items: baseline;
  justify-content: space-between;
  gap: .25rem 2rem;
  padding: 1.75rem 0 1rem;
  border-bottom: 1px solid var(--line);
}
.name { margin: 0; font-size: 1.35rem; font-weight: bold; }
.name a { color: inherit; text-decoration: none; }
nav, .steps, footer { font-family: system-ui, "Segoe UI", Arial, sans-serif; font-size: .95rem; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; margin: 0; padding: 0; list-style: none; }
nav a { display: inline-block; padding: .35rem 0; color: var(--quiet); text-decoration: none; border-bottom: 2px solid transparent; }

/* The text. */
main { padding: .5rem 0 1.5rem; }
h1 { margin: 1.5rem 0 .75rem; font-size: clamp(1.9rem, 6vw, 2.6rem); line-height: 1.15; }
h2 { margin: 2rem 0 .5rem; font-size: 1.3rem; line-height: 1.3; }
p { margin: 0 0 1rem; }
.lead { font-size: 1.2rem; line-height: 1.55; }
.when { color: var(--quiet); }
figure { margin: 1.5rem 0; }
figure img { display: block; border-radius: 8px; }
figcaption { margin-top: .5rem; color: var(--quiet); font-size: .95rem; }

/* A table: class:hours in the page list. */
table { width: 100%; margin: 1.5rem 0; border-collapse: collapse; background: var(--card); }
th, td { padding: .55rem .8rem; text-align: left; vertical-align: top; border-bottom: 1px solid var(--line); }
th { border-bottom: 2px solid var(--accent); font-family: system-ui, "Segoe UI", Arial, sans-serif; font-size: .9rem; }

/* Below: the neighbours, and the end of the page. */
.steps { display: flex; flex-wrap: wrap; justify-content: space-between; gap: .5rem 2rem; padding: 1rem 0; border-top: 1px solid var(--line); }
.steps a { padding: .35rem 0; text-decoration: none; }
.steps a[rel="next"] { margin-left: auto; }
footer { padding-bottom: 2rem; color: var(--quiet); }
)txt";

const std::string_view kNewPicture = R"txt(<svg xmlns="http://www.w3.org/2000/svg" width="704" height="352" viewBox="0 0 704 352">
<defs>
<linearGradient id="sky" x1="0" y1="0" x2="0" y2="1">
<stop offset="0" stop-color="#e79a6f"/>
<stop offset=".6" stop-color="#f8dcae"/>
</linearGradient>
</defs>
<rect width="704" height="352" fill="url(#sky)"/>
<circle cx="500" cy="138" r="50" fill="#fff3dc"/>
<path d="M0 209 C100 132 176 143 264 193 C363 132 462 143 550 185 C616 154 671 165 704 181 V352 H0 Z" fill="#c98a6b"/>
<path d="M0 259 C88 209 187 198 286 248 C385 198 495 203 704 264 V352 H0 Z" fill="#8f5f5c"/>
<path d="M0 303 C132 248 253 264 374 297 C484 259 616 264 704 297 V352 H0 Z" fill="#56414f"/>
<path d="M0 336 C176 297 363 314 704 330 V352 H0 Z" fill="#33293a"/>
</svg>
)txt";

namespace {

constexpr std::string_view kTemplateToMenu = R"txt(;The template: what is around the text of every page. Lines that come out empty are not written.
<!DOCTYPE html>
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>@STRIPTITLE &ndash; @@1</title>
;A page that has a line @DESCRIPTION = gets its own words in place of these.
<meta name="description" content="@@1">
<link rel="stylesheet" href="style.css">
;The page that is being looked at stands out in the menu.
<style media="all">nav a[href="@THIS"] { color: var(--text); border-color: var(--accent); }</style>
</head>
<body>
<header>
<p class="name"><a href="index.htm">@@1</a></p>
<nav aria-label="Pages">
<ul>
;A link to every page, made by each build.
<!--TOC HERE-->
)txt";
constexpr std::string_view kTemplateFromMenu = R"txt(</ul>
</nav>
</header>
<main>
<h1>@TITLE</h1>
;The text of the page.
<!--BODY HERE-->
</main>
;=2= keeps a line from the first page, =8= from the last one.
<div class="steps">
=2=<a rel="prev" href="@PREV">&larr; @PREVTITLE</a>
=8=<a rel="next" href="@NEXT">@NEXTTITLE &rarr;</a>
</div>
<footer>
<p>&copy; @YEAR @@1 &middot; page @XOFY_X of @XOFY_Y</p>
</footer>
</body>
</html>
)txt";

constexpr std::string_view kPageListToName = R"txt(;The page list: every page of the site, in its order. A line that begins with a semicolon is a remark.
;Save it as Windows-1252 (editors say "Western" or "ANSI"), then build: kiv-cli build
;
;@@1 is a text for many places, here the name of the site.
)txt";
constexpr std::string_view kPageListFromName = R"txt(;!!1[file|width|height|what it shows|caption] is a picture with its caption.
!!1 = <figure><img src="!1" width="!2" height="!3" alt="!4"><figcaption>!5</figcaption></figure>
;??1[page|words] is a link to a page, and on that page itself the words alone.
??1 = <strong>!2</strong>|<a href="!1.htm">!2</a>
;
@FILE = index
@TITLE = Welcome
@DESCRIPTION = Where this site begins
<p class="lead">This is the first page of @@1. Its text stands in the file <code>_html.txt</code>, and what is
around it in <code>_template.txt</code>. Write your own over it.</p>
<h2>One name, many places</h2>
<p>The name of the site is written once, in the line <code>&#64;&#64;1 = @@1</code> at the top of the page list.
It comes out above, below, in the title of the window and here: @@1. Change that line and build, and it has
changed everywhere.</p>
<h2>Links that know where they are</h2>
<p>??1[index|Welcome], ??1[table|A table] and ??1[picture|A picture] are made by one pattern: it makes a link of
a page, but not on that page itself. The menu above lists whatever pages there are, and the links below lead to
the neighbours. None of them is ever written by hand.</p>
;
@FILE = table
@TITLE = A table
@DESCRIPTION = Rows of text become a table
<p class="lead">A line is a row, and a TAB character separates the cells: that is all there is to write.</p>
<zutable>
class:hours
h:Day	Open	Good to know
Monday	closed	
Tuesday to Friday	9 to 5	Tea at three
Saturday	10 to 4	Come early
</zutable>
<p>In the page list it stands between <code>&lt;zutable&gt;</code> and <code>&lt;/zutable&gt;</code>. The row
that begins with <code>h:</code> is the head, and <code>class:</code> names the table for the style sheet,
<code>style.css</code>.</p>
;
@FILE = picture
@TITLE = A picture
@DESCRIPTION = A pattern with blanks to fill
<p class="lead">What looks the same many times is written once, as a pattern with blanks to fill.</p>
!!1[hills.svg|704|352|Hills, one behind the other, in the evening|Hills in the evening]
<p>One line of the page list made this picture with its caption:
<code>!&#33;1[hills.svg|704|352|...]</code>. The pattern stands at the top of the list. Put your own
pictures into this folder, and write a line for each.</p>
<p>The site has @XOFY_Y pages, and this is number @XOFY_X: words such as <code>&#64;XOFY_X</code>,
<code>&#64;TITLE</code> and <code>&#64;YEAR</code> become what they stand for.</p>
)txt";

constexpr std::string_view kSiteMapPage = R"txt(;
@FILE = sitemap
@TITLE = Site map
@DESCRIPTION = All pages of all sections
<p class="lead">All sections and their pages.</p>
;What the last build of each folder in _group.txt has left in its _sitemap.txt: "kiv-cli group" builds them all.
<!--SITEMAPHERE-->
)txt";

constexpr std::string_view kSectionListToName = R"txt(;The page list of a section: a folder with a page list and a template of its own, named in _group.txt of the
;folder above. "kiv-cli build" in this folder builds it alone, "kiv-cli group" in that one all of them.
;
;@@1 is the name of the site, @@2 that of the section.
)txt";
constexpr std::string_view kSectionListFromName = R"txt(;
@FILE = index
@TITLE = @@2
@DESCRIPTION = Where this section begins
<p class="lead">This is the first page of the section &ldquo;@@2&rdquo;. Write your own over it.</p>
<p>A section is good for what goes together and looks alike: it has its own menu, its own neighbours and its own
template. From one section to another lead plain links: <a href="../index.htm">the first page of the site</a>.</p>
;
@FILE = more
@TITLE = More
@DESCRIPTION = A second page of the section
<p class="lead">A second page. Each further one begins with its own lines for file and title.</p>
)txt";

} // namespace

const std::string_view kSectionTemplate = R"txt(;The template of this section. Its style sheet is that of the folder above.
<!DOCTYPE html>
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<meta name="viewport" content="width=device-width, initial-scale=1">
=1=<title>@STRIPTITLE &ndash; @@1</title>
=2=<title>@STRIPTITLE &ndash; @@2 &ndash; @@1</title>
<meta name="description" content="@@2">
<link rel="stylesheet" href="../style.css">
;The page that is being looked at stands out in the menu.
<style media="all">nav a[href="@THIS"] { color: var(--text); border-color: var(--accent); }</style>
</head>
<body>
<header>
<p class="name"><a href="../index.htm">@@1</a></p>
<nav aria-label="Pages">
<ul>
<li><a href="../index.htm">Home</a></li>
;A link to every page of the section.
<!--TOC HERE-->
</ul>
</nav>
</header>
<main>
<h1>@TITLE</h1>
<!--BODY HERE-->
</main>
<div class="steps">
=2=<a rel="prev" href="@PREV">&larr; @PREVTITLE</a>
=8=<a rel="next" href="@NEXT">@NEXTTITLE &rarr;</a>
</div>
<footer>
<p>&copy; @YEAR @@1 &middot; page @XOFY_X of @XOFY_Y</p>
</footer>
</body>
</html>
)txt";

const std::string_view kNewsTemplate = R"txt(;The template of the news. Its style sheet is that of the folder above.
<!DOCTYPE html>
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<meta name="viewport" content="width=device-width, initial-scale=1">
=1=<title>@STRIPTITLE &ndash; @@1</title>
=2=<title>@STRIPTITLE &ndash; News &ndash; @@1</title>
<link rel="stylesheet" href="../style.css">
</head>
<body>
<header>
<p class="name"><a href="../index.htm">@@1</a></p>
<nav aria-label="Pages">
<ul>
<li><a href="../index.htm">Home</a></li>
<li><a href="index.htm">All news</a></li>
</ul>
</nav>
</header>
<main>
<h1>@TITLE</h1>
<!--BODY HERE-->
</main>
<footer>
<p>&copy; @YEAR @@1</p>
</footer>
</body>
</html>
)txt";

namespace {

constexpr std::string_view kNewsListToName = R"txt(;The page list of the news. "kiv-cli news" puts each item into it, right below the two lines that begin with
;";inserthere": leave these as they are. "kiv-cli build" in this folder builds the newest item and the list of
;all, "kiv-cli group" in the folder above every item.
;
;@@1 is the name of the site.
)txt";
constexpr std::string_view kNewsListFromName = R"txt(;
;A line of the list: 1 date, 2 file, 3 title, 4 who wrote it, 5 newspaper, 6 subhead.
!!1 = <p><span class="when">!1</span><br><a href="!2.htm">!3</a></p>
;The head of an item, with the same numbers.
!!2 = <p class="when">!1 &nbsp; !5 &nbsp; !4 &nbsp; !6</p>
;
@FILE = index
@TITLE = News
<p class="lead">What is new, the newest first.</p>
;inserthere1
;
;inserthere2
)txt";

} // namespace

// clang-format on

std::string NewTemplateText(std::string_view menu)
{
    return Joined({kTemplateToMenu, menu, kTemplateFromMenu});
}

std::string NewPageListText(std::string_view name, bool has_site_map)
{
    return Joined({kPageListToName, kNameDefinition, name, "\n", kPageListFromName,
                   has_site_map ? kSiteMapPage : ""});
}

std::string NewSiteMapText()
{
    return "index.htm\">Welcome</A></LI>\n"
           "<ul class=\"sub\">\n"
           "table.htm\">A table</A></LI>\n"
           "picture.htm\">A picture</A></LI>\n"
           "sitemap.htm\">Site map</A></LI>\n"
           "</ul>\n";
}

std::string MenuLine(std::string_view folder, std::string_view title)
{
    return Joined({"<li><a href=\"", folder, "/index.htm\">", title, "</a></li>"});
}

std::string SectionPageListText(std::string_view name, std::string_view title)
{
    return Joined({kSectionListToName, kNameDefinition, name, "\n", kSectionDefinition, title, "\n",
                   kSectionListFromName});
}

std::string NewsPageListText(std::string_view name)
{
    return Joined({kNewsListToName, kNameDefinition, name, "\n", kNewsListFromName});
}

std::string SectionSiteMapText(std::string_view title)
{
    return Joined({"index.htm\">", title,
                   "</A></LI>\n"
                   "<ul class=\"sub\">\n"
                   "more.htm\">More</A></LI>\n"
                   "</ul>\n"});
}

} // namespace kiv
