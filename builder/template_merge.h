// The merge: every line that reaches a page passes through MergeLine, a template line through
// WriteTemplateLine as well.
#pragma once

#include "builder/build_state.h"
#include "builder/line_triggers.h"

#include <string>
#include <string_view>

namespace kiv {

/// Transforms a line of the current page in place: filters it by pass, places the lists, expands
/// macros, references, server scripts and variables, in the format's order. `triggers` are the
/// line's (ScanLine). Lists are written to the page's output. Throws RunError for malformed
/// constructs and expansions without end.
void MergeLine(std::string& line, Triggers triggers, Build& build);

/// Transforms a template line, whose triggers are given, and writes it to the page's output, unless
/// it ends up empty.
void WriteTemplateLine(std::string& line, Triggers triggers, Build& build);

/// Appends one record and its line end to the page's output.
inline void WriteLine(std::string& output, std::string_view record)
{
    output.append(record).append("\r\n", 2);
}

} // namespace kiv
