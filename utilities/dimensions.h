// Dimension calculator: scales a picture's width and height in proportion.
#pragma once

#include "platform/run_error.h"

#include <string>
#include <string_view>

namespace kiv {

/// The four fields of the window, in tab order. "Clear" is `Dimensions{}`.
struct Dimensions {
    std::string start_width;
    std::string start_height;
    std::string new_width;
    std::string new_height;
};

/// "Calculate": fills in the new height, or the new width when that reads as 0. Throws RunError,
/// the fields untouched: `division` for a starting side of 0, `overflow` for a number out of range.
void Calculate(Dimensions& fields);

/// What the window says of a calculation that was refused.
std::string_view RefusalText(const RunError& error);

} // namespace kiv
