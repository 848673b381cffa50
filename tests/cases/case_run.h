#pragma once

#include "tests/cases/case_file.h"

#include <string>

namespace kiv::test {

/// Lays a case out in a fresh folder, runs it and returns what differs from what it expects; ""
/// when nothing does.
std::string RunCase(const Case& one);

} // namespace kiv::test
