// Text as HTML has it.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// A text as it stands in HTML, between quotes, too: "&", "<", ">" and the double quote as
/// references. All other bytes stay what they are, whatever their character set.
std::string HtmlText(std::string_view text);

} // namespace kiv
