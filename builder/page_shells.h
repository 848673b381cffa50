// The fixed HTML around pages that do not use the template, and redirect pages.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What stands around a page that does not use the template.
struct PageShell {
    std::string_view mode;
    std::string_view head; // from behind the title on; "": the page has no head at all
    std::string_view body;
    std::string_view closing; // its line end is the caller's; "": nothing is written
};

/// The shell of a mode; null for pages in the template and for redirects.
const PageShell* FindPageShell(std::string_view mode);

/// The opening text, "" when there is none. The caller adds one line end.
std::string ShellOpening(const PageShell& shell, std::string_view title);

/// The whole redirect page to `target`. Kind 1 sends the visitor on by a refresh, kind 2 by a
/// script as well. The caller adds one line end.
std::string MakeRedirectPage(int kind, std::string_view target, std::string_view title);

} // namespace kiv
