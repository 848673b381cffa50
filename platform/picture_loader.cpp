#include "platform/picture_loader.h"

#include "platform/run_error.h"
#include "text/text.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

// The information call alone is used, for two formats and from memory.
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_JPEG
#define STBI_ONLY_GIF
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_SIMD
#include <stb_image.h>

namespace kiv {

namespace {

constexpr std::size_t kGifHeader = 13;
constexpr std::size_t kGifSize = 10; // where the size of a GIF ends

[[noreturn]] void Refuse(std::string_view path, std::string_view reason)
{
    std::string text("cannot read the size of ");
    text.append(path).append(": ").append(reason);
    throw RunError(ErrorKind::picture, std::move(text));
}

/// The bytes of a file, read in steps where they are asked for.
class FileBytes {
  public:
    FileBytes(FileReader& files, std::string_view path) : files_(files), path_(path) {}

    /// Up to `count` bytes from `offset` on.
    std::string_view Part(std::uint64_t offset, std::size_t count)
    {
        if (offset < begin_ || offset + count > begin_ + bytes_.size()) {
            bytes_ = files_.ReadPart(path_, offset, std::max(count, kStep));
            begin_ = offset;
        }
        return std::string_view(bytes_).substr(static_cast<std::size_t>(offset - begin_), count);
    }

    /// The byte at `offset`, or -1 behind the end.
    int Byte(std::uint64_t offset)
    {
        const std::string_view part = Part(offset, 1);
        return part.empty() ? -1 : static_cast<unsigned char>(part[0]);
    }

  private:
    static constexpr std::size_t kStep = 512;

    FileReader& files_;
    std::string_view path_;
    std::string bytes_;
    std::uint64_t begin_ = 0;
};

// Markers of a JPEG.
constexpr int kFill = 0xFF;
constexpr int kBaseline = 0xC0;
constexpr int kExtended = 0xC1;
constexpr int kProgressive = 0xC2;
constexpr int kHuffmanTables = 0xC4;
constexpr int kArithmeticTables = 0xCC;
constexpr int kQuantizationTables = 0xDB; // from here on all have a length

/// Whether a segment that may stand before the frame follows this marker: tables, applications'
/// data, a comment.
bool IsPassedOver(int marker)
{
    return marker == kHuffmanTables || marker == kArithmeticTables || marker >= kQuantizationTables;
}

/// Goes from segment to segment up to the frame header. Gives the begin of a JPEG and that header
/// alone, so that nothing else in the file can mislead or stop the reader; empty when there is no
/// frame header.
std::string JpegHeader(FileBytes& file)
{
    std::uint64_t at = 2;
    for (;;) {
        if (file.Byte(at) != kFill)
            return {};
        int marker = kFill;
        while (marker == kFill) // fill bytes may stand before a marker
            marker = file.Byte(++at);
        const int high = file.Byte(at + 1);
        const int low = file.Byte(at + 2);
        if (low < 0)
            return {};
        const std::size_t length =
            static_cast<std::size_t>(high) * 256 + static_cast<std::size_t>(low);
        if (marker == kBaseline || marker == kExtended || marker == kProgressive) {
            std::string header("\xFF\xD8\xFF");
            header.append(file.Part(at, 1 + length));
            constexpr std::size_t kPrecision = 6;
            // Twelve bits a sample are as good as eight: only the size is asked for.
            if (marker != kBaseline && header.size() > kPrecision && header[kPrecision] == 12)
                header[kPrecision] = 8;
            return header;
        }
        if (!IsPassedOver(marker) || length < 2)
            return {};
        at += 1 + length;
    }
}

/// As much of the file as says its size; empty when it is neither a JPEG nor a GIF.
std::string Header(FileBytes& file)
{
    const std::string_view head = file.Part(0, kGifHeader);
    if (head.substr(0, 2) == "\xFF\xD8")
        return JpegHeader(file);
    const std::string_view sign = head.substr(0, 6);
    const bool gif = sign == "GIF87a" || sign == "GIF89a";
    return gif && head.size() >= kGifSize ? std::string(head) : std::string();
}

std::string ReadHeader(FileReader& files, std::string_view path)
{
    try {
        FileBytes file(files, path);
        return Header(file);
    } catch (const RunError& error) {
        Refuse(path, error.text);
    }
}

} // namespace

PictureSize HeaderPictureLoader::Size(std::string_view path)
{
    const std::string header = ReadHeader(files_, path);
    std::vector<stbi_uc> bytes(header.begin(), header.end());
    PictureSize size;
    const bool known =
        !bytes.empty() && stbi_info_from_memory(bytes.data(), static_cast<int>(bytes.size()),
                                                &size.width, &size.height, nullptr) != 0;
    if (!known)
        Refuse(path, "neither a JPEG nor a GIF, or damaged");
    if (size.width <= 0 || size.height <= 0)
        Refuse(path, "a side of 0 pixels");
    return size;
}

} // namespace kiv
