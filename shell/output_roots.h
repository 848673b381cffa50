// The output roots that a page list declares.
#pragma once

#include "blocks/dispatcher.h"
#include "platform/machine.h"

#include <string>
#include <vector>

namespace kiv {

/// The roots of "@DIR1 =", "@ASP =" and "@HTM =" in this order, as far as the page list of the
/// current directory sets them. Says nothing, whatever is wrong with the list.
std::vector<std::string> DeclaredOutputRoots(Machine& machine, const BlockMemory& blocks);

} // namespace kiv
