// The files that the manual's own build needs beside its page list.
#pragma once

#include <string>

namespace kiv::manual {

/// Makes of the manual in folder `manual` (its page list and chapters) a body for each page,
/// body/NAME.htm in folder `site`, and search-index.js. Throws std::runtime_error when a file
/// cannot be read or written, and when a word of the format is told of nowhere.
void WriteBodies(const std::string& manual, const std::string& site);

} // namespace kiv::manual
