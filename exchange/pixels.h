// A picture, unpacked.
#pragma once

#include <cstddef>
#include <vector>

namespace kiv {

/// In pixels.
struct Sides {
    int width = 0;
    int height = 0;
    bool operator==(const Sides&) const = default;
};

/// Of each pixel: red, green, blue, how solid it is.
inline constexpr std::size_t kChannels = 4;

struct Pixels {
    Sides sides;
    std::vector<unsigned char> bytes; // `kChannels` of each, row by row from the top
};

/// The picture as it was seen, of one that was taken with the camera held otherwise; `orientation`
/// is 1 to 8, as Exif counts.
Pixels Upright(const Pixels& taken, int orientation);

} // namespace kiv
