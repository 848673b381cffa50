// Server-script lines: "@SHOWDB:" and its kin stand for a block of server-side script.
#pragma once

#include "builder/addresses.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The words that begin a server-script line, such as "@SHOWDB:".
std::vector<std::string_view> ServerScriptWords();

/// Whether a line begins with such a word, in any case.
bool IsServerScript(std::string_view line);

/// Replaces a line that begins with a server-script directive (in any case) by its block, whose
/// lines are joined by CR LF; other lines stay. Returns the directive, "" when there is none.
/// Throws `subscript` when fields are missing, `invalid-argument` for "@SHOWDB:" without "|".
std::string_view ExpandServerScript(std::string& line, const Addresses& addresses);

} // namespace kiv
