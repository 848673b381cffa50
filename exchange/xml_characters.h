// Which characters of a text XML can hold.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// UTF-8 without what XML 1.0 cannot hold: control characters, and bytes that are no UTF-8.
std::string XmlCharacters(std::string_view utf8);

} // namespace kiv
