#include "exchange/thumbnail.h"

#include "exchange/exif_orientation.h"
#include "exchange/pixels.h"
#include "exchange/sound_jpeg.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_key.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_BMP
#define STBI_ONLY_GIF
#define STBI_ONLY_JPEG
#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#include <stb_image.h>

#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STB_IMAGE_RESIZE_STATIC
#include <stb_image_resize.h>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>

namespace kiv {

namespace {

constexpr std::int64_t kMostPixels = 120'000'000; // half a gigabyte when unpacked
constexpr std::string_view kMark = "kiv thumbnail ";
constexpr std::string_view kCommentMarker = "\xFF\xFE";

[[noreturn]] void Refuse(std::string_view reason)
{
    throw RunError(ErrorKind::picture, std::string(reason), {},
                   "Save the picture anew as a JPEG, GIF, PNG or BMP file.");
}

void RefuseSides(std::string_view picture)
{
    Sides sides;
    int channels = 0;
    if (picture.size() > INT_MAX ||
        stbi_info_from_memory(reinterpret_cast<const stbi_uc*>(picture.data()),
                              static_cast<int>(picture.size()), &sides.width, &sides.height,
                              &channels) == 0)
        Refuse("it is not a JPEG, GIF, PNG or BMP picture that can be read");
    // A BMP that begins with its upper row has a negative height.
    if (std::int64_t{sides.width} * std::abs(std::int64_t{sides.height}) > kMostPixels)
        Refuse("it has more than 120 million pixels");
}

using StbPixels = std::unique_ptr<stbi_uc, decltype(&stbi_image_free)>;

/// The sides of the thumbnail: the longer one is cut to `most`, none is less than a pixel.
Sides SmallSides(const Sides& full, int most)
{
    const int longer = std::max(full.width, full.height);
    if (longer <= most)
        return full;
    const auto cut = [&](int side) {
        return std::max(1, static_cast<int>(std::lround(double(side) * most / longer)));
    };
    return {cut(full.width), cut(full.height)};
}

Pixels ReadSmall(const std::string& picture, int most)
{
    if (picture.starts_with("\xFF\xD8") && !HasSoundTables(picture))
        Refuse("it is damaged");
    RefuseSides(picture);
    Sides full;
    int channels = 0;
    const StbPixels unpacked(stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(picture.data()),
                                                   static_cast<int>(picture.size()), &full.width,
                                                   &full.height, &channels,
                                                   static_cast<int>(kChannels)),
                             &stbi_image_free);
    if (!unpacked || full.width < 1 || full.height < 1)
        Refuse("it is damaged");
    Pixels small;
    small.sides = SmallSides(full, most);
    small.bytes.resize(kChannels * static_cast<std::size_t>(small.sides.width) *
                       static_cast<std::size_t>(small.sides.height));
    if (stbir_resize_uint8_srgb(unpacked.get(), full.width, full.height, 0, small.bytes.data(),
                                small.sides.width, small.sides.height, 0,
                                static_cast<int>(kChannels), static_cast<int>(kChannels) - 1,
                                0) == 0)
        throw RunError(ErrorKind::memory, "there is not enough memory to make it smaller");
    return small;
}

/// What shines through is white, and what is not solid any more is left out.
std::vector<unsigned char> OnWhite(const Pixels& pixels)
{
    std::vector<unsigned char> colours;
    colours.reserve(pixels.bytes.size() / kChannels * 3);
    for (std::size_t at = 0; at < pixels.bytes.size(); at += kChannels) {
        const int solid = pixels.bytes[at + 3];
        for (std::size_t colour = 0; colour < 3; ++colour)
            colours.push_back(static_cast<unsigned char>(
                (pixels.bytes[at + colour] * solid + 255 * (255 - solid) + 127) / 255));
    }
    return colours;
}

void AppendBytes(void* jpeg, void* bytes, int count)
{
    static_cast<std::string*>(jpeg)->append(static_cast<const char*>(bytes),
                                            static_cast<std::size_t>(count));
}

/// A JPEG with a comment right behind the two bytes and the segment that begin each.
std::string WithComment(const std::string& jpeg, std::string_view comment)
{
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(jpeg.at(at)); };
    const std::size_t head = 4 + std::size_t{byte(4)} * 256 + byte(5);
    const std::size_t size = comment.size() + 2;
    const std::array<char, 2> length = {static_cast<char>(size / 256),
                                        static_cast<char>(size % 256)};
    return Joined({std::string_view(jpeg).substr(0, head), kCommentMarker,
                   std::string_view(length.data(), length.size()), comment,
                   std::string_view(jpeg).substr(head)});
}

} // namespace

std::string ThumbnailMark(std::string_view picture, const ThumbnailLook& look)
{
    return Joined({kMark, Decimal(look.size), " ", Decimal(look.quality), " ", TextKey(picture)});
}

std::string MarkOfThumbnail(std::string_view head)
{
    const std::size_t at = head.substr(0, kThumbnailHead).find(kMark);
    if (!head.starts_with("\xFF\xD8") || at == npos || at < 4 ||
        head.substr(at - 4, 2) != kCommentMarker)
        return "";
    const auto size = static_cast<std::size_t>(static_cast<unsigned char>(head[at - 2])) * 256 +
                      static_cast<unsigned char>(head[at - 1]);
    return size < 2 ? "" : std::string(head.substr(at, size - 2));
}

std::string MakeThumbnail(std::string_view picture, const ThumbnailLook& look)
{
    const Pixels small =
        Upright(ReadSmall(PlainJpeg(picture), look.size), ExifOrientation(picture));
    std::string jpeg;
    if (stbi_write_jpg_to_func(AppendBytes, &jpeg, small.sides.width, small.sides.height, 3,
                               OnWhite(small).data(), look.quality) == 0)
        Refuse("its sides are too long");
    return WithComment(jpeg, ThumbnailMark(picture, look));
}

} // namespace kiv
