// Small pictures of large ones.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

struct ThumbnailLook {
    int size = 200;   // of the longer side, in pixels; a picture is never enlarged
    int quality = 85; // of the JPEG, 1 to 100
};

/// What a thumbnail bears when kiv has made it: that it did, of which bytes, and how it was to
/// look. Two are the same just when the thumbnail would be.
std::string ThumbnailMark(std::string_view picture, const ThumbnailLook& look);

/// The mark in the first bytes of a file; "" where there is none, for then it is not kiv's work.
std::string MarkOfThumbnail(std::string_view head);

/// So many bytes of a file are enough for its mark.
inline constexpr std::size_t kThumbnailHead = 256;

/// The thumbnail of a JPEG, GIF (its first frame), PNG or BMP: a JPEG with its mark, turned as the
/// camera was held, on white where the picture lets something shine through. The same bytes give
/// the same thumbnail. Throws RunError of kind `picture`, without a place, for anything else and
/// for more than 120 million pixels.
std::string MakeThumbnail(std::string_view picture, const ThumbnailLook& look);

} // namespace kiv
