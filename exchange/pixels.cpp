#include "exchange/pixels.h"

#include <array>
#include <utility>

namespace kiv {

namespace {

/// How the upright picture is read out of one that was taken otherwise: with its sides exchanged,
/// from the right, from the bottom.
struct Turn {
    bool exchanged;
    bool from_right;
    bool from_bottom;
};
constexpr std::array<Turn, 8> kTurns = {{
    {false, false, false},
    {false, true, false},
    {false, true, true},
    {false, false, true},
    {true, false, false},
    {true, false, true},
    {true, true, true},
    {true, true, false},
}};

} // namespace

Pixels Upright(const Pixels& taken, int orientation)
{
    const Turn& turn = kTurns[static_cast<std::size_t>(orientation) - 1];
    Pixels upright{taken.sides, {}};
    if (turn.exchanged)
        std::swap(upright.sides.width, upright.sides.height);
    upright.bytes.reserve(taken.bytes.size());
    for (int y = 0; y < upright.sides.height; ++y)
        for (int x = 0; x < upright.sides.width; ++x) {
            const int column = turn.exchanged ? y : x;
            const int row = turn.exchanged ? x : y;
            const int from_x = turn.from_right ? taken.sides.width - 1 - column : column;
            const int from_y = turn.from_bottom ? taken.sides.height - 1 - row : row;
            const auto at = static_cast<std::ptrdiff_t>(kChannels) *
                            (std::ptrdiff_t{from_y} * taken.sides.width + from_x);
            const auto pixel = taken.bytes.begin() + at;
            upright.bytes.insert(upright.bytes.end(), pixel,
                                 pixel + static_cast<std::ptrdiff_t>(kChannels));
        }
    return upright;
}

} // namespace kiv
