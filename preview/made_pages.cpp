#include "preview/made_pages.h"

#include "text/html_text.h"
#include "text/joined_text.h"
#include "text/text.h"

namespace kiv {

namespace {

constexpr std::string_view kStyle =
    "<style>"
    "body{font:16px/1.5 system-ui,sans-serif;max-width:60rem;margin:2rem auto;padding:0 1rem;"
    "color:#222;background:#fff}"
    "h1{font-size:1.4rem}a{color:#0b57a4}li{padding:.1rem 0}ul{list-style:none;padding:0}"
    "pre{background:#f4f4f2;border:1px solid #ddd;padding:1rem 0;overflow:auto;counter-reset:n}"
    "pre span{display:block;padding:0 1rem 0 4rem;min-height:1.5em;counter-increment:n}"
    "pre span:before{content:counter(n);float:left;margin-left:-3.5rem;width:2.5rem;"
    "text-align:right;color:#888}"
    ".note{background:#fff6d6;border:1px solid #e4cf7a;padding:.6rem 1rem}"
    "@media (prefers-color-scheme:dark){body{color:#ddd;background:#1d1f21}a{color:#8ab8e6}"
    "pre{background:#26292c;border-color:#444}.note{background:#3a3419;border-color:#6b5e25}}"
    "</style>";

/// Everything up to the page's own content.
std::string Head(std::string_view title, std::string_view charset, const std::string& script)
{
    return Joined({"<!DOCTYPE html>\n<html lang=\"en\"><head>", charset, "<title>", title,
                   "</title><meta name=\"viewport\" content=\"width=device-width\">", kStyle,
                   script, "</head><body>\n"});
}

constexpr std::string_view kUtf8 = "<meta charset=\"utf-8\">";

std::string Link(const std::string& address, const std::string& words)
{
    return Joined({"<a href=\"", HtmlText(address), "\">", HtmlText(words), "</a>"});
}

void AppendItem(std::string& page, const std::string& name, std::string_view behind)
{
    const std::string shown = name + std::string(behind);
    Append(page, {"<li>", Link("./" + EncodedName(name) + std::string(behind), shown), "</li>\n"});
}

} // namespace

std::string FolderPage(const Served& folder, const std::string& script)
{
    const std::string shown = SitePath(folder.names);
    std::string page = Head(HtmlText(shown), kUtf8, script);
    Append(page, {"<h1>", HtmlText(shown), "</h1>\n<p>This folder has no index page.</p>\n<ul>\n"});
    if (!folder.names.empty())
        page.append("<li><a href=\"../\">../</a></li>\n");
    for (const bool is_folder : {true, false})
        for (const NativeEntry& entry : folder.entries)
            if (entry.is_folder == is_folder)
                AppendItem(page, entry.name, is_folder ? "/" : "");
    return page.append("</ul>\n</body></html>\n");
}

std::string MissingPage(const Served& missing, const std::string& script)
{
    std::string page = Head("Not found", kUtf8, script);
    Append(page, {"<h1>Nothing is called ", HtmlText(SitePath(missing.names)), "</h1>\n"});
    if (!missing.nearest.empty()) {
        const std::string_view slash = missing.nearest_is_folder ? "/" : "";
        const std::string address = EncodedPath(missing.nearest).append(slash);
        const std::string shown = SitePath(missing.nearest).append(slash);
        Append(page, {"<p>", missing.differs_in_case ? "But there is " : "Was this meant: ",
                      Link(address, shown), missing.differs_in_case ? "" : "?",
                      missing.differs_in_case
                          ? ". Most servers tell small letters from capitals in names, too."
                          : "",
                      "</p>\n"});
    }
    return page.append("<p>This page loads again as soon as it is there.</p>\n</body></html>\n");
}

std::string ScriptPage(std::string_view name, std::string_view text, const std::string& script)
{
    std::string page = Head(HtmlText(name), "", script);
    Append(page, {"<p class=\"note\">", HtmlText(name),
                  " holds script that the web server runs. The preview runs none: this is the text "
                  "of the page.</p>\n<pre>"});
    for (int line = 1; !text.empty(); ++line)
        Append(page, {"<span data-kiv-at=\"", Decimal(line), ":1\">", HtmlText(TakeLine(text)),
                      "</span>"});
    return page.append("</pre>\n</body></html>\n");
}

} // namespace kiv
