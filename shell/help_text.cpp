#include "shell/help_text.h"

#include <array>

namespace kiv {

namespace {

// clang-format off
constexpr auto kAts = std::to_array<std::string_view>({
    R"(@printclose = flush right print | close)",
    R"(@@stop  will stop reading file until...)",
    R"(@@start)",
    R"(@@EOY toggles, use "New Year on" (Utils menu))",
    R"(@font = <font=geneva,arial... size=2>)",
    R"(@vfont = <font=verdana... size=1>)",
    R"(@TODAY ... today's date)",
    R"(@YEAR ... this year)",
    R"(@DATETIME ... system date and time)",
    R"(@VAR1 = whatever ... set file by file in _html.txt)",
    R"(@VAR2 = whatever ... set file by file in _html.txt)",
    R"(@VAR1 ... use in _template.txt)",
    R"(@VAR2 ... use in _template.txt)",
    R"(@XOFY_X is the number of the file in sequence)",
    R"(@XOFY_Y is the total number of files in the _html.txt file)",
    R"(@XOFY_X- is the number of the file in sequence minus 1 (use with index.htm))",
    R"(@XOFY_Y- is the total number of files in the _html.txt file minus 1)",
    R"(@htmasp or @asphtm uses the appropriate extension (no period))",
    R"(@NOINDEX ... omit from sitemap and tochere)",
    R"(@root ... for 'declaration/signers')",
    R"(@thisdir ... for c:\temp\frog ... provides 'frog')",
    R"(@FILE ... this filename, NO extension)",
    R"(@THIS ... this filename, YES extension)",
    R"(@THISSTRIP ... this filename, NO extension, NO directory)",
    R"(@PREV ... previous filename, YES extension)",
    R"(@NEXT ... next filename, YES extension)",
    R"(@PREVTITLE ... prev title as is)",
    R"(@NEXTTITLE ... next title as is)",
    R"(@PREVNO ... previous filename, NO extension)",
    R"(@NEXTNO ... next filename, NO extension)",
    R"(@TITLE ... title as is)",
    R"(@THISTITLE ... title as is)",
    R"(@STRIPTITLE ... title with codes removed)",
    R"(@QTITLE ... this title with &quot; for quotemarks)",
    R"(@KEYWORDS ... words in title, separated by commas)",
    R"(@PF ... puts in Printer Friendly title & filename)",
});

constexpr auto kBangs = std::to_array<std::string_view>({
    R"(!!FLV[server_abbr|filename|width|height] server_abbr can be kel or mor filename chicks/mychicks)",
    R"(!!POP[short_alias|url|width|height|{parms|full}] if 'full' then add parms=yes)",
    R"(   example: !!POP[bio|http://www.example.com/bio.htm|400|400]Biography</a>)",
    R"(   example: !!POP[bio|http://www.example.com/bio.htm|400|400|full]Biography</a>)",
    R"(   or SIMPLE: !!pop[dog.htm] for 800x600 full    )",
    R"(!!swap[alias|file.htm|img1.gif|img2.gif|width|height|alt])",
    R"(    This swaps two images with mouseover and mouseoff)",
    R"(!!flash[dir/file.swf|width|height])",
    R"(!!showhide[sh2|More info...] requires </div> after the text to be shown/hid)",
    R"(!!mailto[someone@example.com] returns sniffer safe <a href=mailto...>    )",
    R"(!!mailto[someone@example.com!] returns sniffer safe <a href=mailto...>...</a>)",
});

constexpr auto kTopMatter = std::to_array<std::string_view>({
    R"(@file = filename   ... or   filename.html)",
    R"(@title = The title)",
    R"(@description = ... replaces the description)",
    R"(@keywords = ... replaces the keywords)",
    R"(@ID = indexdog after @TITLE = ... then)",
    R"(  use ??1[ID:indexdog|START])",
    R"(@GROUP = history after @TITLE = for ?! navigation)",
    R"(on template, you can use "0_1_3*" to match group's stem)",
    R"(@NAKED prints with no surrounding html coding)",
    R"(@TIGHTPRINT prints tight with the print | close links)",
    R"(@NOTEMPLATE prints with minimum html coding)",
    R"(@TIGHTNOTEMPLATE prints with minimum html and zero margins top and left coding)",
    R"(@NOBODYTEMPLATE prints with minimum coding and NO <body...> line)",
    R"(@REDIRECT|http://.... redirects to the new url)",
    R"(@REDIRECT2|http://.... no-delay redirects to the new url)",
    R"(@DIR1 = \\server\site\  in head of _html.txt sets up primary output directory)",
    R"(@ASP = \\server\asp\  in head  of _html.txt sets up asp directory)",
    R"(@HTM = \\server\htm\  in head  of _html.txt sets up htm directory)",
    R"(ASP: HTM: DIR1: at front of line (_template or _html))",
    R"(  note =1=ASP: is ok)",
    R"(@@1 (or %%1) = whatever  (through @@9) used elsewhere in html.txt])",
    R"(!!1 (or $$1) = whatever !1 more !2 more !1 and !3 (see usage next))",
    R"(!!1[var1|var2|var3] more line ... substitutes into the above)",
    R"(  use {{ and }} which will be converted into brackets [ and ])",
    R"(  use {} which will be converted to a pipe |)",
    R"(??1[index or ID:File|START] in template ... no extension)",
    R"(??1 = yes|no if file=T|file=F in html header)",
    R"(?!1[GroupName|File or ID:File|talktalk] in template ... File w/no extension)",
    R"(?!1 = both|grouponly|no if group=T,file=T|if group=T,file=F|if group=F,file=F in html header)",
    R"([[1 = before stuff|after stuff)",
    R"([[2)",
    R"(middle stuff)",
    R"(]])",
    R"(<> adds line break in any !!1 = or ??1 = line)",
    R"(~~ is replaced by "<>" for asp statements)",
});

constexpr auto kMisc = std::to_array<std::string_view>({
    R"(@SENDEMAIL:Subject|email|someone@example.com|messageout)",
    R"(   subject|from|to|message ... each can be text or variable)",
    R"(@SSENDEMAIL is for newer email, for win2000 and beyond)",
    R"(@FORMREAD:var1|var2|var3|var4 reads from form input)",
    R"(@OPENDB:D:\db\mydb.mdb)",
    R"(@DBINSERT:Table1|var1|var2|var3 inserts into a table, put an asterisk (*) at front of literals)",
    R"(@DBUPDATE:Table1|ID|var1|var2|var3 updates table1, WHERE ID=IDval, put an asterisk (*) at front of literals)",
    R"(@KILLRECORD:Table1|var kills a record where var=val-of-var)",
    R"(@FIXQUOTES:var1|var2|var3 replaces ' with '' in each (use prior to db entry))",
    R"(@SHOWDB:D:\db\mydb.mdb|people opens db and table and prints out all)",
    R"(=1= ... in template ... First file only)",
    R"(=2= ... in template ... All but First)",
    R"(=5= ... in template ... All but First and Last)",
    R"(=8= ... in template ... All but Last)",
    R"(=9= ... in template ... Last file only)",
    R"(<ZU... stuff)",
    R"(zuequation , zuplaywright, zuquiz1, zuquiz2, )",
    R"(zusidebar, zusidebar2, zusidebar3, zusidebar4,)",
    R"(zusidebar5, zusidebar6, zutimeline1)",
    R"(zutable is enhanced; if you give a "class:" line, that's your stylesheet name,)",
    R"(written to toc.txt; otherwise it defaults. (use h: to use th))",
    R"(zutable1 is the same, but a little bigger font)",
    R"(++filename  adds the file)",
    R"(++filename, if first line in _template.txt, calls external file instead    )",
    R"(!++filename adds huge file as is using strBuff)",
    R"(_group.txt allows batch processing. Use rel. paths from the root dir where this is)",
    R"(_singlehtml.txt existing causes kiv to populate it with all in that one file (no template))",
    R"(  to deploy use @file = singlehtml, with a '++_singlehtml.txt' line)",
    R"(_alt.txt is pipe-delim filename|alt|credit|caption info (used with Pic Sizer))",
    R"(c:\utils\kiv_editpad.txt contains path to word processor)",
    R"(<!--TOC HERE--> puts the table of contents there)",
    R"(<!--SITEMAPHERE--> puts sitemap (requires a _group.txt))",
    R"(<!--DROPDOWN HERE--> puts the dropdown there)",
    R"(!!1 = <a href="!6.htm"><img src="images/!1" width=!2 height=!3 alt="!4"></a>)",
    R"(++images/_banglist.txt)",
    R"(++images/_pichtml.txt)",
});
// clang-format on

std::string Section(std::string_view heading, std::span<const std::string_view> lines)
{
    HelpText help;
    help.addhead(heading);
    for (const std::string_view line : lines)
        help.addline(line);
    return help.Text();
}

constexpr std::array<HelpSection, 4> kSections = {{
    {"Command2", "at's", "Show the words that begin with @", show1},
    {"Command3", "bangs", "Show the words that begin with !! and their arguments", show2},
    {"Command4", "Top Matter", "Show what may stand at the top of _html.txt", show3},
    {"Command5", "Misc...", "Show mail, databases, block tags, included files and the rest", show4},
}};

} // namespace

void HelpText::addhead(std::string_view text)
{
    text_.append("\r\n").append(text).append("\r\n");
}

void HelpText::addline(std::string_view text)
{
    text_.append(text).append("\r\n");
}

std::string show1()
{
    return Section("At's", kAts);
}

std::string show2()
{
    return Section("Bangs", kBangs);
}

std::string show3()
{
    return Section("_html.txt TOP MATTER", kTopMatter);
}

std::string show4()
{
    return Section("Misc", kMisc);
}

std::span<const HelpSection> HelpSections()
{
    return kSections;
}

} // namespace kiv
