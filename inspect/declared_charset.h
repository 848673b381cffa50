// The character set that a page says it is in.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The name in small letters, from <meta charset="..."> or <meta http-equiv="content-type"
/// content="...; charset=...">, whichever comes first in the page's head; "" when it says none.
std::string DeclaredCharset(std::string_view page);

} // namespace kiv
