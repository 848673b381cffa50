// One fault is told once, though several looks may find it.
#pragma once

#include "inspect/finding.h"

#include <vector>

namespace kiv {

/// Takes out what another finding of the same line says better. `findings` are sorted by place.
void DropDoubled(std::vector<Finding>& findings);

} // namespace kiv
