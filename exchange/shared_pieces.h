// Texts that stand somewhere in the middle of several pages.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv {

/// Lines of a page that nothing is shared of yet, from one line to behind another.
struct OwnSpan {
    std::size_t first;
    std::size_t end;
};

/// A page as this looks at it.
struct OwnText {
    const std::vector<std::string_view>* lines;
    std::vector<OwnSpan> spans; // in the order of the page
};

/// A piece on a page.
struct PiecePlace {
    std::size_t piece;
    std::size_t first; // line that it begins at, from 0
};

struct SharedPieces {
    std::vector<std::vector<std::string_view>> pieces; // their lines
    std::vector<std::vector<PiecePlace>> places;       // of each page, in its order
};

/// Pieces of some length that stand on two pages or more. They lie in the spans and do not overlap.
SharedPieces FindPieces(const std::vector<OwnText>& pages);

} // namespace kiv
