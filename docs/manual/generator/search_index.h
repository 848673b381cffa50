// What the search of the manual looks through, as a script: a page read from a file may load no
// other kind of data.
#pragma once

#include "docs/manual/generator/sections.h"

#include <string>
#include <vector>

namespace kiv::manual {

/// Sets `kivSections` to an array of [page, title, id, heading, text], a section each. ASCII.
std::string SearchIndexScript(const std::vector<ManualPage>& pages);

} // namespace kiv::manual
