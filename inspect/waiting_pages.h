// Pages that stand in a stretch of the page list between "@@EOY" lines, which a build leaves out
// as long as the New Year switch is off.
#pragma once

#include "inspect/site_view.h"

#include <set>
#include <string>

namespace kiv {

/// Their paths, upper-cased, in each of the folders that the section writes into.
std::set<std::string> WaitingPages(const SiteView& site);

} // namespace kiv
