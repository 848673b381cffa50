#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Sixteen digits, 0 to f, that stand for a text (FNV-1a), the same on every machine. Two texts
/// have different ones but by the rarest chance.
std::string TextKey(std::string_view text);

} // namespace kiv
