#include "exchange/pixels.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv {
namespace {

/// Pixels of one letter each.
Pixels Of(int width, int height, const std::string& letters)
{
    Pixels pixels{{width, height}, {}};
    for (const char letter : letters)
        pixels.bytes.insert(pixels.bytes.end(), kChannels, static_cast<unsigned char>(letter));
    return pixels;
}

std::string Letters(const Pixels& pixels)
{
    std::string letters;
    for (std::size_t at = 0; at < pixels.bytes.size(); at += kChannels)
        letters.push_back(static_cast<char>(pixels.bytes[at]));
    return letters;
}

// A picture whose rows are "ab" and "cd" and "ef", as each position of the camera stores it.
TEST(Pixels, EveryPositionOfTheCamera)
{
    const struct {
        int orientation;
        Sides stored;
        const char* letters;
    } rows[] = {
        {1, {2, 3}, "abcdef"}, {2, {2, 3}, "badcfe"}, {3, {2, 3}, "fedcba"}, {4, {2, 3}, "efcdab"},
        {5, {3, 2}, "acebdf"}, {6, {3, 2}, "bdface"}, {7, {3, 2}, "fdbeca"}, {8, {3, 2}, "ecafdb"},
    };
    for (const auto& row : rows) {
        const Pixels upright =
            Upright(Of(row.stored.width, row.stored.height, row.letters), row.orientation);
        EXPECT_EQ(upright.sides, (Sides{2, 3})) << row.orientation;
        EXPECT_EQ(Letters(upright), "abcdef") << row.orientation;
    }
}

} // namespace
} // namespace kiv
