// Pages that a server fills in before it hands them out: code between "<%" and "%>" or "<?" and
// "?>".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// How long the server code is that begins here; 0: none does.
std::size_t ServerCodeSize(std::string_view rest);

/// The page, in UTF-8, without its server code: line ends stay, and a mark stands where code was.
/// `found` tells whether there was any.
std::string WithoutServerCode(std::string_view page, bool& found);

/// Whether a part of a page that WithoutServerCode gave, now Windows-1252, has the mark of code in
/// it: what the server makes of it, nobody knows.
bool HoldsServerCode(std::string_view part);

} // namespace kiv
