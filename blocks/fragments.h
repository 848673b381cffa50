// Small pieces of text that several block expanders put into their output.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The image tag of a bar, `width` by `height` pixels.
std::string zbar(std::string_view width, std::string_view height);

} // namespace kiv
