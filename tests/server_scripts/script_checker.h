// Whether server-side script has the form of script that runs: a check of structure, no engine.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// What is wrong with the script of a page, "line 3: …" each, lines from 1; none when all is well.
/// Looked at are the marks "<%" and "%>", one statement a line, texts and parentheses, what each
/// statement is made of, blocks that open and close over the whole page, and the form of the
/// database statements that are put together in `sql`.
std::vector<std::string> FaultsOf(std::string_view page);

} // namespace kiv::test
