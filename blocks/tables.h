// Tables: "<zutable>", "<zutable1>" in the page list, "<zutab…" in included files.
#pragma once

#include "blocks/dispatcher.h"

#include <string>
#include <string_view>

namespace kiv {

/// A line that begins so ends a table.
inline constexpr std::string_view kTableEnd = "</zutable";

/// Reads a table block up to "</zutable" and puts the finished table into `line`. `kind` is 0 or 1.
void zutable(std::string& line, int kind, BlockContext& context);

/// The simpler table of included files. `line` holds the start tag and becomes the table.
void zutabtable2(std::string& line, BlockContext& context);

/// `text` with "<zuorange>" and "</zuorange>" turned into a font colour.
std::string zuorange(std::string text);

} // namespace kiv
