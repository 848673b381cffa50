// What the commands do, in a sentence each: for tooltips and screen readers.
#pragma once

#include <string_view>

namespace kiv {

/// By a command's name; "" for a separator.
std::string_view CommandTip(std::string_view name);

} // namespace kiv
