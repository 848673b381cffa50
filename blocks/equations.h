// Equations: "<zuequation>", a formula set as a table of three rows.
#pragma once

#include "blocks/dispatcher.h"

#include <string>
#include <string_view>

namespace kiv {

inline constexpr std::string_view kEquationEnd = "</zuequation>";

/// Puts an equation table for the text between "<zuequation>" and "</zuequation>" of `line`. "|"
/// parts its terms, and "a\b" is a fraction. A missing end tag is reported; `line` then keeps only
/// what follows the start tag.
void zuequation(std::string& line, BlockContext& context);

} // namespace kiv
