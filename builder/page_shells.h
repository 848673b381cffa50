// The fixed HTML around pages that do not use the template, and redirect pages.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The opening text for a mode: "notemplate", "tightnotemplate", "nobodytemplate", "tightprint" or
/// its alias "printtight"; empty for any other mode. The caller adds one line end.
std::string MakePageShell(std::string_view mode, std::string_view title);

/// The whole redirect page to `target`. Kind 1 sends the visitor on by a refresh, kind 2 by a
/// script as well. The caller adds one line end.
std::string MakeRedirectPage(int kind, std::string_view target, std::string_view title);

} // namespace kiv
