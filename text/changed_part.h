// What differs between a text and what became of it.
#pragma once

#include <cstddef>
#include <string_view>

namespace kiv {

/// The stretch between what two texts have in common at their beginnings and ends.
struct ChangedPart {
    std::size_t from = 0;  // where it begins in both, 0-based
    std::size_t taken = 0; // its characters in the text before
    std::size_t put = 0;   // and in the text after
};

/// The beginning counts first: of "aa" and "a" the last character was taken.
ChangedPart ChangeBetween(std::string_view before, std::string_view after);

} // namespace kiv
