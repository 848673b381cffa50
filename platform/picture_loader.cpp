#include "platform/picture_loader.h"

#include "platform/picture_headers.h"
#include "platform/run_error.h"
#include "text/joined_text.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The information call alone is used, from memory.
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_BMP
#define STBI_ONLY_GIF
#define STBI_ONLY_JPEG
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_SIMD
#include <stb_image.h>

namespace kiv {

namespace {

[[noreturn]] void RefusePicture(std::string_view path, std::string_view reason,
                                std::string what_to_do)
{
    RunError error(ErrorKind::picture, Joined({"cannot read the size of ", path, ": ", reason}), {},
                   std::move(what_to_do));
    error.file = path;
    throw RunError(std::move(error));
}

PictureHeader ReadHeader(FileReader& files, std::string_view path)
{
    try {
        return ReadPictureHeader(files, path);
    } catch (const RunError& error) {
        RefusePicture(path, error.text, error.hint);
    }
}

/// The side of a PNG that stands at `at`; 0 when it is larger than a PNG may be.
int PngSide(const std::string& header, std::size_t at)
{
    std::uint32_t side = 0;
    for (std::size_t i = 0; i < 4; ++i)
        side = side << 8 | static_cast<unsigned char>(header[at + i]);
    return side <= INT_MAX ? static_cast<int>(side) : 0;
}

/// What the library says of a header; sides of 0 when that is nothing.
PictureSize SizeIn(const std::string& header)
{
    const std::vector<stbi_uc> bytes(header.begin(), header.end());
    PictureSize size;
    if (stbi_info_from_memory(bytes.data(), static_cast<int>(bytes.size()), &size.width,
                              &size.height, nullptr) == 0)
        return {};
    // A BMP that begins with its upper row has a negative height.
    if (size.height < 0 && size.height != INT_MIN)
        size.height = -size.height;
    return size;
}

PictureSize SizeIn(const PictureHeader& header)
{
    if (header.bytes.empty())
        return {};
    // A PNG's sides can be had without the half of the library that unpacks it.
    if (header.kind == kPng)
        return {PngSide(header.bytes, kPngWidth), PngSide(header.bytes, kPngHeight)};
    return SizeIn(header.bytes);
}

} // namespace

PictureSize HeaderPictureLoader::Size(std::string_view path)
{
    const PictureHeader header = ReadHeader(files_, path);
    const PictureSize size = SizeIn(header);
    if (size.width > 0 && size.height > 0)
        return size;
    const std::string what_to_do =
        "Save the picture anew as a JPEG, GIF, PNG or BMP file, or move it out of the folder.";
    if (header.kind.empty())
        RefusePicture(path, "it is not a JPEG, GIF, PNG or BMP picture", what_to_do);
    RefusePicture(path,
                  "it looks like " + header.kind +
                      (header.kind.starts_with("a ") ? ", but says no size" : ""),
                  what_to_do);
}

} // namespace kiv
