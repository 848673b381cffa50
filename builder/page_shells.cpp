#include "builder/page_shells.h"

#include <algorithm>
#include <iterator>

namespace kiv {

namespace {

#define KIV_BODY_COLOURS                                                                           \
    "<body bgcolor=#ffffff text=#000000 link=#0000cc vlink=#551a8b alink=#ff0000"

constexpr std::string_view kBody = KIV_BODY_COLOURS ">\r\n";
constexpr std::string_view kTightBody =
    KIV_BODY_COLOURS " TOPMARGIN=0 LEFTMARGIN=0 MARGINHEIGHT=0 MARGINWIDTH=0>\r\n";

#undef KIV_BODY_COLOURS

constexpr std::string_view kHeadEnd = "</head>\r\n";

constexpr std::string_view kPrintRest =
    "<style>\r\n"
    "body {color:black;background:white;}\r\n"
    ".uber {position:absolute;top:0;left:5px;}\r\n"
    ".printclose {text-align:right;font-family:verdana,sans-serif;font-size:8pt;"
    "padding-bottom:8px;}\r\n"
    "@media print {\r\n"
    "   .printclose {visibility:hidden}\r\n"
    "}\r\n"
    "</style>\r\n"
    "</head>\r\n"
    "<body>\r\n"
    "<div class=\"uber\"><div class=\"printclose\"><a href=\"javascript:this.print()\">PRINT</a> | "
    "<a href=\"javascript:this.close()\">CLOSE</a></div>";

constexpr std::string_view kHtmlEnd = "</body>\r\n</html>";

constexpr PageShell kPageShells[] = {
    {"notemplate", kHeadEnd, kBody, kHtmlEnd},
    {"nobodytemplate", kHeadEnd, "", kHtmlEnd}, // no body tag, although its end is written
    {"tightnotemplate", kHeadEnd, kTightBody, ""},
    {"tightprint", kPrintRest, "", "</div></body></html>"},
    {"naked", "", "", ""},
};

} // namespace

const PageShell* FindPageShell(std::string_view mode)
{
    const auto* const row = std::ranges::find(kPageShells, mode, &PageShell::mode);
    return row == std::end(kPageShells) ? nullptr : row;
}

std::string ShellOpening(const PageShell& shell, std::string_view title)
{
    if (shell.head.empty())
        return {};
    std::string opening = "<html>\r\n<head>\r\n<title>";
    return opening.append(title).append("</title>\r\n").append(shell.head).append(shell.body);
}

std::string MakeRedirectPage(int kind, std::string_view target, std::string_view title)
{
    const std::string url(target);
    const std::string name(title);
    std::string page = "<HTML>\r\n<HEAD>\r\n<TITLE>Redirection of: " + name + "</TITLE>\r\n" +
                       R"(<META HTTP-EQUIV="Refresh" CONTENT="2; URL=)" + url + "\">\r\n";
    if (kind == 2)
        page += "<SCRIPT LANGUAGE=\"JavaScript\">\r\n"
                "<!-- \r\n"
                "window.location=\"" +
                url +
                "\";\r\n"
                "// -->\r\n"
                "</script>\r\n";
    // "<CENTER>" stays open.
    page += "</HEAD>\r\n<BODY>\r\n<CENTER>\r\n<H3>" + name + " has moved.</H3>\r\n" +
            "<P><B>Your browser should take you there in a few moments.</B></P>\r\n" +
            "<P><B>If it doesn't, <A HREF=\"" + url + "\">Click Here</A></B></P>\r\n" +
            "</BODY></HTML>\r\n";
    return page;
}

} // namespace kiv
