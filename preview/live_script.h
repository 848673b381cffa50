// The script that served pages load.
#pragma once

#include <string_view>

namespace kiv {

/// It reloads the page when something that the page uses has changed, tells how the last build
/// went, and leads from an element to its source.
std::string_view LiveScript();

} // namespace kiv
