// How deep the elements of a page are nested.
#pragma once

#include <cstddef>
#include <string_view>

namespace kiv {

/// At most so many elements of the page are open at once. Counts too many where a page closes what
/// it did not open last, and stops counting at `enough`.
std::size_t NestingBound(std::string_view html, std::size_t enough);

} // namespace kiv
