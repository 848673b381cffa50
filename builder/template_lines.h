// The lines of the template, which tell on which pages they stand.
#pragma once

#include "builder/merge_steps.h"

#include <cstddef>
#include <optional>

namespace kiv {

struct BuildState;

/// Takes a template line through its own steps and the merge, and writes it to the page's output,
/// unless it ends up empty.
void WriteTemplateLine(MergedLine& line);

/// How long a position code such as "=1=" is.
inline constexpr std::size_t kPositionCode = 3;

/// Whether a line that begins with "=", `code` and "=" stands on the current page. Nothing for a
/// code that is none, but text.
std::optional<bool> StandsHere(char code, const BuildState& state);

} // namespace kiv
