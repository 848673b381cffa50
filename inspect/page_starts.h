// Pages of the page list that lack a line they need.
#pragma once

#include "platform/place.h"

#include <optional>

namespace kiv {

struct SiteView;

/// Where the page begins that has nothing below its "@FILE =", which ends a build in an error.
std::optional<Place> PageWithoutLines(const SiteView& site);

} // namespace kiv
