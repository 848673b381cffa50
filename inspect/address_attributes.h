// Which attributes of which elements are addresses.
#pragma once

#include "inspect/html_facts.h"

#include <optional>
#include <string_view>

namespace kiv {

/// What the address in an attribute is for; nothing when the attribute is none whatever else its
/// element has. Both names are in small letters.
std::optional<LinkKind> KindOfAddress(std::string_view element, std::string_view attribute);

/// Whether an attribute is an address, or may be one: that hangs on other attributes of its
/// element. Names are in any case.
bool MayBeAddress(std::string_view element, std::string_view attribute);

} // namespace kiv
