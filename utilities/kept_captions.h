// What picture lists would lose of "_alt.txt", which is written anew by each run.
#pragma once

#include "platform/machine.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A line of "_alt.txt" that the new one will not have.
struct LostLine {
    int line = 0;          // 1-based
    std::string_view text; // as it was typed
    std::string_view file; // the picture that it names; empty: the line is a remark
    std::string
        spelled_as; // that picture as the folder has it, when only its letters' case differs
};

/// Those of `alt_bytes`, the content of "_alt.txt", in their order. `pictures` are the names that
/// the folder has. A line without any text of the user's is none.
std::vector<LostLine> LostLines(std::string_view alt_bytes,
                                const std::vector<std::string>& pictures);

/// Adds the lines to "_alt.old.txt" of the current directory, each that is not there yet; then
/// warns of each entry, with its texts, and of the remarks. Nothing happens when there are none.
void KeepLostLines(Machine& machine, const std::vector<LostLine>& lost);

/// Warns once of the pictures in the current directory that no list can hold, with their number.
void TellOfOtherFormats(Machine& machine);

} // namespace kiv
