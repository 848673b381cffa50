#include "platform/picture_headers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace kiv {

namespace {

using namespace std::string_view_literals;

/// The bytes of a file, read in steps where they are asked for.
class FileBytes {
  public:
    FileBytes(FileReader& files, std::string_view path) : files_(files), path_(path) {}

    /// Up to `count` bytes from `offset` on.
    std::string_view Part(std::uint64_t offset, std::size_t count)
    {
        if (offset < begin_ || offset + count > begin_ + bytes_.size()) {
            // Who reads on and on gets more at a time.
            const bool reads_on = offset != 0 && offset == begin_ + bytes_.size();
            step_ = reads_on ? std::min(step_ * 2, kMostStep) : kStep;
            bytes_ = files_.ReadPart(path_, offset, std::max(count, step_));
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

    /// What is at hand from `offset` on; empty behind the end.
    std::string_view From(std::uint64_t offset)
    {
        Part(offset, 1);
        return std::string_view(bytes_).substr(static_cast<std::size_t>(offset - begin_));
    }

  private:
    static constexpr std::size_t kStep = 512;
    static constexpr std::size_t kMostStep = std::size_t{64} * 1024;

    FileReader& files_;
    std::string_view path_;
    std::string bytes_;
    std::uint64_t begin_ = 0;
    std::size_t step_ = kStep;
};

/// No header says its size behind so many bytes: what looks like one is something else.
constexpr std::uint64_t kLongestHeader = std::uint64_t{16} * 1024 * 1024;

// Markers of a JPEG.
constexpr int kFill = 0xFF;
constexpr int kNoRestart = 0x01; // a marker of arithmetic coding, without a segment
constexpr int kBaseline = 0xC0;
constexpr int kExtended = 0xC1;
constexpr int kProgressive = 0xC2;
constexpr int kHuffmanTables = 0xC4;
constexpr int kArithmeticTables = 0xCC;
constexpr int kFirstRestart = 0xD0;
constexpr int kLastRestart = 0xD7;
constexpr int kQuantizationTables = 0xDB; // from here on all have a length

/// Whether a marker stands alone.
bool HasNoSegment(int marker)
{
    return marker == kNoRestart || (marker >= kFirstRestart && marker <= kLastRestart);
}

/// Whether a segment that may stand before the frame follows this marker: tables, applications'
/// data, a comment.
bool IsPassedOver(int marker)
{
    return marker == kHuffmanTables || marker == kArithmeticTables || marker >= kQuantizationTables;
}

/// The next marker, -1 when there is none near. `at` is moved onto it. Bytes that are no marker may
/// stand between segments, and fill bytes before a marker.
int NextMarker(FileBytes& file, std::uint64_t& at)
{
    constexpr std::uint64_t kMostBetween = std::uint64_t{1024} * 1024;
    const std::uint64_t end = std::min(at + kMostBetween, kLongestHeader);
    bool filled = false;
    while (at < end) {
        const std::string_view bytes = file.From(at);
        if (bytes.empty())
            return -1;
        for (const char each : bytes) {
            const int byte = static_cast<unsigned char>(each);
            if (filled && byte != kFill && byte != 0)
                return byte;
            filled = byte == kFill;
            ++at;
        }
    }
    return -1;
}

/// Goes from segment to segment up to the frame header. Gives the begin of a JPEG and that header
/// alone, so that nothing else in the file can mislead or stop the library.
std::string JpegHeader(FileBytes& file)
{
    for (std::uint64_t at = 2;;) {
        const int marker = NextMarker(file, at);
        if (HasNoSegment(marker)) {
            ++at;
            continue;
        }
        const int high = file.Byte(at + 1);
        const int low = file.Byte(at + 2);
        if (marker < 0 || low < 0)
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

// Parts of a GIF.
constexpr std::size_t kGifHeader = 13;
constexpr std::size_t kGifScreen = 6; // where the size of the screen stands
constexpr std::size_t kGifSize = 4;   // width and height
constexpr int kGifExtension = 0x21;
constexpr int kGifFrame = 0x2C;

/// Goes behind the blocks of an extension, which end with an empty one. False when the file ends,
/// or goes on for too long.
bool PassBlocks(FileBytes& file, std::uint64_t& at)
{
    int size = file.Byte(at);
    for (; size > 0 && at < kLongestHeader; size = file.Byte(at))
        at += 1 + static_cast<std::uint64_t>(size);
    ++at;
    return size == 0 && at < kLongestHeader;
}

/// Width and height of a GIF's first frame as they stand there; empty when there is none.
std::string FirstFrameSize(FileBytes& file)
{
    constexpr int kHasColours = 0x80;
    constexpr int kColourBits = 0x07;
    const int flags = file.Byte(kGifScreen + kGifSize);
    std::uint64_t at = kGifHeader;
    if (flags >= 0 && (flags & kHasColours) != 0)
        at += std::uint64_t{3} << ((flags & kColourBits) + 1);
    while (file.Byte(at) == kGifExtension) {
        at += 2; // its label, too
        if (!PassBlocks(file, at))
            return {};
    }
    if (file.Byte(at) != kGifFrame)
        return {};
    const std::string_view size = file.Part(at + 5, kGifSize); // behind the frame's place
    return size.size() == kGifSize ? std::string(size) : std::string();
}

/// The header of a GIF. Where the screen is empty, it has the size of the first frame.
std::string GifHeader(FileBytes& file)
{
    std::string header(file.Part(0, kGifHeader));
    if (header.size() < kGifScreen + kGifSize)
        return {};
    const std::string_view screen = std::string_view(header).substr(kGifScreen, kGifSize);
    const bool is_empty = screen.substr(0, 2) == "\0\0"sv || screen.substr(2) == "\0\0"sv;
    if (!is_empty)
        return header;
    const std::string frame = FirstFrameSize(file);
    return frame.empty() ? frame : header.replace(kGifScreen, kGifSize, frame);
}

/// The signature and the first chunk of a PNG but its checksum.
std::string PngHeader(FileBytes& file)
{
    constexpr std::size_t kHeader = 29;
    const std::string_view header = file.Part(0, kHeader);
    return header.size() == kHeader ? std::string(header) : std::string();
}

// What is told of the packing of a BMP's pixels: runs of eight bits or of four.
constexpr std::string_view kRunLengths8 = "\1\0\0\0"sv;
constexpr std::string_view kRunLengths4 = "\2\0\0\0"sv;

/// The two headers of a BMP. How its pixels are packed is left out: only the size is asked for.
std::string BmpHeader(FileBytes& file)
{
    constexpr std::size_t kFirst = 14; // where the second begins, with its size
    constexpr std::size_t kPacking = kFirst + 16;
    constexpr std::size_t kWithPacking = 40; // a smaller second header does not tell it
    constexpr std::size_t kLargest = 124;
    constexpr std::size_t kMasks = 12; // may stand behind it
    std::uint64_t size = 0;
    for (std::size_t i = 4; i > 0; --i)
        size = size * 256 + static_cast<std::uint64_t>(std::max(file.Byte(kFirst + i - 1), 0));
    std::string header(file.Part(0, kFirst + kLargest + kMasks));
    if (size > kLargest || header.size() < kFirst + size)
        return {};
    for (const std::string_view runs : {kRunLengths8, kRunLengths4})
        if (size >= kWithPacking && header.compare(kPacking, runs.size(), runs) == 0)
            header.replace(kPacking, runs.size(), runs.size(), '\0');
    return header;
}

struct Format {
    std::string_view begin;
    std::string_view kind;
    std::string (*header)(FileBytes& file);
};

constexpr std::array<Format, 5> kFormats = {{
    {"\xFF\xD8"sv, "a JPEG", JpegHeader},
    {"GIF87a"sv, "a GIF", GifHeader},
    {"GIF89a"sv, "a GIF", GifHeader},
    {"\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv, kPng, PngHeader},
    {"BM"sv, "a BMP", BmpHeader},
}};

bool IsText(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) {
        return static_cast<unsigned char>(c) >= 0x20 ||
               "\t\r\n"sv.find(c) != std::string_view::npos;
    });
}

} // namespace

PictureHeader ReadPictureHeader(FileReader& files, std::string_view path)
{
    FileBytes file(files, path);
    constexpr std::size_t kLook = 64;
    const std::string head(file.Part(0, kLook));
    for (const Format& format : kFormats)
        if (head.starts_with(format.begin))
            return {std::string(format.kind), format.header(file)};
    if (head.empty())
        return {"an empty file", {}};
    return {IsText(head) ? "text" : "", {}};
}

} // namespace kiv
