#pragma once

#include "builder/build_state.h"

#include <string>
#include <string_view>

namespace kiv {

/// Where a page goes: `name` is its name as the "@FILE =" line has it, untrimmed. The result may be
/// relative to the working directory.
std::string OutputPath(std::string_view name, const BuildState& state, const PassState& pass);

/// What stands behind the last "/" or "\" of a path.
std::string_view WithoutFolders(std::string_view path);

/// Shows a path as the status: over 35 characters, its first 13, "..." and its last 20.
void ShowPath(Reporter& reporter, std::string_view path);

} // namespace kiv
