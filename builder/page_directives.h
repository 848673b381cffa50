// The page directives: lines such as "@TITLE = Home" that write into a page's record.
#pragma once

#include "builder/definitions.h"

#include <string_view>
#include <vector>

namespace kiv {

struct BuildState;

/// The words that begin a page directive, such as "@TITLE =".
std::vector<std::string_view> PageDirectiveWords();

/// Whether a value follows the word of a page directive.
bool TakesValue(std::string_view word);

/// A page directive that a line holds.
struct TakenDirective {
    std::string_view word; // "": the line is none
    PageField field = {};  // that it sets
};

/// Takes a page directive into the record of page `page_number` (0 before the first page). A
/// directive that is not kept as text empties the line.
TakenDirective TakePageDirective(BuildState& state, int page_number, std::string_view& line);

} // namespace kiv
