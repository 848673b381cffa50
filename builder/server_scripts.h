// Server-script lines: "@SHOWDB:" and its kin stand for a block of server-side script.
#pragma once

#include "platform/addresses.h"

#include <string>

namespace kiv {

/// Replaces a line that begins with a server-script directive (in any case) by its block, lines joined by CR LF. Each
/// directive is tested in turn on what the one before left. Throws `subscript` when fields are missing,
/// `invalid-argument` for "@SHOWDB:" without "|".
void ExpandServerScript(std::string& line, const Addresses& addresses);

} // namespace kiv
