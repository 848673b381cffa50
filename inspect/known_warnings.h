// What to do about the warnings of a build, whose texts are fixed.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What to do about a warning with this text; "" when nothing is known.
std::string_view WhatToDoAbout(std::string_view warning);

/// The text as one line that somebody reads: line ends are blanks, and a long one is cut.
std::string OneLine(std::string_view warning);

} // namespace kiv
