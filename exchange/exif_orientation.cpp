#include "exchange/exif_orientation.h"

#include <cstddef>
#include <cstdint>

namespace kiv {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kExifHead = "Exif\0\0"sv;
constexpr std::uint32_t kOrientationTag = 0x0112;

/// Numbers of a block of bytes in either order; past its end everything is 0.
class BlockNumbers {
  public:
    BlockNumbers(std::string_view bytes, bool high_first) : bytes_(bytes), high_first_(high_first)
    {
    }

    std::uint32_t At(std::size_t at, std::size_t count) const
    {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < count; ++i)
            number = number << 8 | Byte(at + (high_first_ ? i : count - 1 - i));
        return number;
    }

  private:
    std::uint32_t Byte(std::size_t at) const
    {
        return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0;
    }
    std::string_view bytes_;
    bool high_first_;
};

/// What the block of Exif data behind its head says; 1 where it says nothing.
int OrientationIn(std::string_view tiff)
{
    if (!tiff.starts_with("MM") && !tiff.starts_with("II"))
        return 1;
    const BlockNumbers numbers(tiff, tiff.starts_with("MM"));
    const std::size_t directory = numbers.At(4, 4);
    if (directory >= tiff.size())
        return 1;
    const std::uint32_t entries = numbers.At(directory, 2);
    for (std::uint32_t i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + 12 * std::size_t{i};
        if (entry + 12 > tiff.size())
            break;
        if (numbers.At(entry, 2) != kOrientationTag)
            continue;
        const std::uint32_t value = numbers.At(entry + 8, 2);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    }
    return 1;
}

} // namespace

int ExifOrientation(std::string_view jpeg)
{
    if (!jpeg.starts_with("\xFF\xD8"))
        return 1;
    const BlockNumbers numbers(jpeg, true);
    for (std::size_t at = 2; at + 4 <= jpeg.size() && numbers.At(at, 1) == 0xFF;) {
        const std::uint32_t marker = numbers.At(at + 1, 1);
        if (marker == 0xFF) { // filled up before a marker
            ++at;
            continue;
        }
        if (marker == 0xDA || marker == 0xD9) // the picture itself, or the end
            break;
        const std::size_t size = numbers.At(at + 2, 2);
        if (size < 2)
            break;
        const std::string_view segment = jpeg.substr(at + 4, size - 2);
        if (marker == 0xE1 && segment.starts_with(kExifHead))
            return OrientationIn(segment.substr(kExifHead.size()));
        at += 2 + size;
    }
    return 1;
}

} // namespace kiv
