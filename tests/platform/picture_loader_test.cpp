#include "platform/picture_loader.h"
#include "platform/run_error.h"
#include "tests/platform/picture_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

std::string Word(int value) // as a JPEG writes it
{
    return {static_cast<char>(value / 256), static_cast<char>(value % 256)};
}

std::string Segment(char marker, const std::string& content)
{
    return "\xFF"s + marker + Word(static_cast<int>(content.size()) + 2) + content;
}

/// A frame header with the given number of components, each sampled 1x1.
std::string Frame(char marker, int width, int height, int components = 3, char precision = 8)
{
    std::string content = precision + Word(height) + Word(width) + static_cast<char>(components);
    for (int i = 1; i <= components; ++i)
        content += static_cast<char>(i) + "\x11\0"s;
    return Segment(marker, content);
}

const std::string kBegin = "\xFF\xD8";
const std::string kJfif = Segment('\xE0', "JFIF\0\1\1\0\0\1\0\1\0\0"s);
const std::string kTables = Segment('\xDB', "\0"s + std::string(64, '\1'));
const std::string kScan = Segment('\xDA', "\1\1\0\0\x3F\0"s) + "data\xFF\xD9";

std::string Gif(const std::string& sign, const std::string& sizes)
{
    // No colour table, background 0, square pixels; then a first frame of 1 x 1 and the end.
    return sign + sizes + "\0\0\0"s + ",\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;"s;
}

class HeaderPictureLoaderTest : public testing::Test {
  protected:
    PictureSize SizeOf(const std::string& bytes)
    {
        files.pictures["a.jpg"] = bytes;
        files.read = 0;
        return loader.Size("a.jpg");
    }

    /// The kind and text of the error; empty when there is none.
    std::string ErrorOf(const std::string& bytes)
    {
        try {
            SizeOf(bytes);
        } catch (const RunError& error) {
            return std::string(KindName(error.kind)) + ": " + error.text;
        }
        return {};
    }

    PictureFiles files;
    HeaderPictureLoader loader{files};
};

TEST_F(HeaderPictureLoaderTest, ReadsEveryKindOfJpeg)
{
    struct Row {
        std::string what;
        std::string bytes;
    };
    const Row rows[] = {
        {"baseline", kBegin + kJfif + kTables + Frame('\xC0', 300, 200) + kScan},
        {"extended", kBegin + kJfif + Frame('\xC1', 300, 200) + kScan},
        {"extended, 12 bits", kBegin + kJfif + Frame('\xC1', 300, 200, 3, 12) + kScan},
        {"progressive", kBegin + kJfif + Frame('\xC2', 300, 200) + kScan},
        {"grey", kBegin + Frame('\xC0', 300, 200, 1) + kScan},
        {"CMYK", kBegin + Segment('\xEE', "Adobe\0\x64\0\0\0\0\2"s) + Frame('\xC0', 300, 200, 4)},
        {"no JFIF segment", kBegin + kTables + Frame('\xC0', 300, 200) + kScan},
        {"Huffman tables first",
         kBegin + Segment('\xC4', "\0"s + std::string(16, '\0')) + Frame('\xC0', 300, 200)},
        {"fill bytes", kBegin + "\xFF\xFF\xFF" + Frame('\xC0', 300, 200) + kScan},
        {"restart interval", kBegin + Segment('\xDD', "\0\4"s) + Frame('\xC0', 300, 200)},
        {"a frame inside an APPn segment",
         kBegin + Segment('\xE1', "Exif\0\0"s + kBegin + Frame('\xC0', 16, 12)) +
             Frame('\xC0', 300, 200)},
        {"a frame inside a comment",
         kBegin + Segment('\xFE', Frame('\xC0', 16, 12)) + Frame('\xC2', 300, 200)},
        {"a GIF inside a comment",
         kBegin + Segment('\xFE', std::string(122, ' ') + "GIF89a") + Frame('\xC0', 300, 200)},
        {"tables that mean nothing",
         kBegin + Segment('\xC4', "\xFF\xFF"s) + Frame('\xC0', 300, 200)},
        {"an unknown segment", kBegin + Segment('\xF7', "what") + Frame('\xC0', 300, 200)},
        {"nothing behind the frame header", kBegin + Frame('\xC0', 300, 200)},
        {"bytes that are no marker behind the begin", kBegin + "hello" + Frame('\xC0', 300, 200)},
        {"bytes that are no marker between segments", kBegin + kJfif + "\xFF\0\xC0"s + kTables +
                                                          "\xFF\0\xFF\xFF\0\0"s +
                                                          Frame('\xC0', 300, 200)},
        {"a long run of bytes that are no marker",
         kBegin + kJfif + std::string(200'000, 'x') + Frame('\xC0', 300, 200)},
        {"markers without a segment",
         kBegin + "\xFF\x01\xFF\xD0\xFF\xD7" + Frame('\xC0', 300, 200) + kScan},
        {"a second frame", kBegin + Frame('\xC0', 300, 200) + Frame('\xC0', 16, 12)},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ErrorOf(row.bytes), "") << row.what;
    for (const Row& row : rows)
        EXPECT_EQ(SizeOf(row.bytes), (PictureSize{300, 200})) << row.what;
}

// A file of four gigabytes was looked through byte by byte.
TEST_F(HeaderPictureLoaderTest, TheSearchForAMarkerEnds)
{
    constexpr std::size_t kMega = std::size_t{1024} * 1024;
    const std::string frame = Frame('\xC0', 300, 200);
    EXPECT_NE(ErrorOf(kBegin + std::string(20 * kMega, '\0') + frame), "");
    EXPECT_LE(files.read, 2 * kMega);
    EXPECT_NE(ErrorOf(kBegin + std::string(20 * kMega, '\xFF') + frame), "");
    EXPECT_LE(files.read, 2 * kMega);
}

TEST_F(HeaderPictureLoaderTest, AHeaderComesToAnEnd)
{
    constexpr std::size_t kMega = std::size_t{1024} * 1024;
    std::string segments;
    std::string markers;
    std::string blocks;
    while (segments.size() < 17 * kMega)
        segments += Segment('\xE1', std::string(65'000, 'x'));
    while (markers.size() < kMega)
        markers += "\xFF\x01";
    while (blocks.size() < 17 * kMega)
        blocks += "\xFF" + std::string(255, 'x');
    const std::string frame = Frame('\xC0', 300, 200);
    EXPECT_EQ(ErrorOf(kBegin + segments.substr(0, 100 * 65'004) + frame), "");
    EXPECT_NE(ErrorOf(kBegin + segments + frame), "");
    const std::string nearly = kBegin + segments.substr(0, 250 * 65'004); // half a megabyte is left
    EXPECT_EQ(ErrorOf(nearly + frame), "");
    EXPECT_NE(ErrorOf(nearly + markers + frame), "");
    EXPECT_LE(files.read, 18 * kMega);
    EXPECT_NE(
        ErrorOf("GIF89a\0\0\0\0\0\0\0!\xFE"s + blocks + "\0,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;"s), "");
}

TEST_F(HeaderPictureLoaderTest, TheOrientationTurnsNothing)
{
    // Exif says "rotate by 90 degrees".
    const std::string exif = "Exif\0\0MM\0\x2A\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s;
    EXPECT_EQ(SizeOf(kBegin + Segment('\xE1', exif) + Frame('\xC0', 300, 200)),
              (PictureSize{300, 200}));
}

TEST_F(HeaderPictureLoaderTest, ReadsLargeSizes)
{
    EXPECT_EQ(SizeOf(kBegin + Frame('\xC0', 65535, 65500)), (PictureSize{65535, 65500}));
    EXPECT_EQ(SizeOf(Gif("GIF89a", "\xFF\xFF\xFE\xFF"s)), (PictureSize{65535, 65534}));
}

TEST_F(HeaderPictureLoaderTest, TheSizeOfAGifIsItsScreen)
{
    // The first frame is 1 x 1, as in an animation that only changes a corner.
    EXPECT_EQ(SizeOf(Gif("GIF87a", "\x2C\1\xC8\0"s)), (PictureSize{300, 200}));
    EXPECT_EQ(SizeOf(Gif("GIF89a", "\x2C\1\xC8\0"s)), (PictureSize{300, 200}));
}

TEST_F(HeaderPictureLoaderTest, AGifOfAnEmptyScreenHasTheSizeOfItsFirstFrame)
{
    const std::string sign = "GIF89a";
    const std::string frame = ",\1\0\2\0\x2C\1\xC8\0\0\2\2\x44\1\0"s; // 300 x 200, at 1, 2
    const std::string second = ",\0\0\0\0\5\0\5\0\0\2\2\x44\1\0"s;
    const std::string control = "!\xF9\4\0\0\0\0\0"s;
    const std::string comment = "!\xFE\5,,,,,\2,,\0"s; // in two blocks
    const std::string colours(3 * 8, ',');             // 8 of them
    const std::string rows[] = {
        sign + "\0\0\0\0\0\0\0"s + frame + second + ";",
        sign + "\0\0\xC8\0\0\0\0"s + frame,
        sign + "\x2C\1\0\0\0\0\0"s + frame,
        sign + "\0\0\0\0\0\0\0"s + control + comment + frame,
        sign + "\0\0\0\0\x82\0\0"s + colours + comment + control + frame,
    };
    for (const std::string& bytes : rows)
        EXPECT_EQ(SizeOf(bytes), (PictureSize{300, 200}));
}

std::string Png(const std::string& sides, const std::string& rest)
{
    return "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"s + sides + rest;
}

/// A BMP's first header: no size of the file, two words of 0, where the rows begin.
const std::string kBitmap = "BM\0\0\0\0\0\0\0\0\x36\0\0\0"s;

std::string Bmp(const std::string& sides)
{
    // One plane of 24 bits, not compressed, and what else is in a header of 40 bytes.
    return kBitmap + "\x28\0\0\0"s + sides + "\1\0\x18\0"s + std::string(24, '\0');
}

/// A BMP of 300 x 200 whose pixels stand in runs of `bits`, 8 (`packing` 1) or 4 (`packing` 2): its
/// size is told as in any other.
std::string PackedBmp(char packing, char bits)
{
    return kBitmap + "\x28\0\0\0\x2C\1\0\0\xC8\0\0\0\1\0"s + bits + "\0"s + packing +
           std::string(23, '\0') + "\0\1"s;
}

TEST_F(HeaderPictureLoaderTest, ReadsPngAndBmpWhateverTheFileIsCalled)
{
    struct Row {
        std::string what;
        std::string bytes;
    };
    const std::string sides = "\0\0\1\x2C\0\0\0\xC8"s; // 300 x 200
    const Row rows[] = {
        {"PNG, true colour", Png(sides, "\x08\2\0\0\0"s + "crc4")},
        {"PNG, grey, 16 bits", Png(sides, "\x10\0\0\0\0"s)},
        {"PNG, transparent, interlaced", Png(sides, "\x08\6\0\0\1"s + "crc4")},
        {"PNG with a palette, and nothing behind", Png(sides, "\x04\3\0\0\0"s)},
        {"BMP", Bmp("\x2C\1\0\0\xC8\0\0\0"s)},
        {"BMP from the upper row on", Bmp("\x2C\1\0\0\x38\xFF\xFF\xFF"s)},
        {"BMP of runs of eight bits", PackedBmp('\1', '\x08')},
        {"BMP of runs of four bits", PackedBmp('\2', '\4')},
        {"BMP of the first kind", kBitmap + "\x0C\0\0\0\x2C\1\xC8\0\1\0\x18\0"s},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ErrorOf(row.bytes), "") << row.what;
    for (const Row& row : rows)
        EXPECT_EQ(SizeOf(row.bytes), (PictureSize{300, 200})) << row.what;
}

TEST_F(HeaderPictureLoaderTest, TheErrorSaysWhatTheFileLooksLike)
{
    const std::string begin = "picture: cannot read the size of a.jpg: it ";
    EXPECT_EQ(ErrorOf(""), begin + "looks like an empty file");
    EXPECT_EQ(ErrorOf("<html>\r\n\t<body>\r\n"), begin + "looks like text");
    EXPECT_EQ(ErrorOf("II\x2A\0\x08\0\0\0"s), begin + "is not a JPEG, GIF, PNG or BMP picture");
    EXPECT_EQ(ErrorOf(kBegin), begin + "looks like a JPEG, but says no size");
    EXPECT_EQ(ErrorOf("GIF89a"), begin + "looks like a GIF, but says no size");
    EXPECT_EQ(ErrorOf(Png("\0\0\0"s, "")), begin + "looks like a PNG, but says no size");
    EXPECT_EQ(ErrorOf("BM\0\0"s), begin + "looks like a BMP, but says no size");
}

TEST_F(HeaderPictureLoaderTest, AnythingElseIsAnError)
{
    struct Row {
        std::string what;
        std::string bytes;
    };
    const Row rows[] = {
        {"empty", ""},
        {"text", "not a picture"},
        {"TIFF", "II\x2A\0\x08\0\0\0"s},
        {"PNG cut in its header", Png("\0\0\1\x2C\0\0\0\xC8"s, "\x08\2\0\0"s)},
        {"PNG of no width", Png("\0\0\0\0\0\0\0\xC8"s, "\x08\2\0\0\0"s)},
        {"PNG without its first chunk",
         "\x89PNG\r\n\x1A\n\0\0\0\x0DIDAT\0\0\1\x2C\0\0\0\xC8\x08\2\0\0\0"s},
        {"BMP cut in its header", Bmp("\x2C\1\0\0\xC8\0\0\0"s).substr(0, 53)},
        {"BMP whose pixels are a JPEG", PackedBmp('\4', '\0')},
        {"BMP of no height", Bmp("\x2C\1\0\0\0\0\0\0"s)},
        {"text that begins as a BMP does",
         "BM is how this text begins, which is longer than the headers of a BMP are"},
        {"begin of a JPEG alone", kBegin},
        {"no frame header", kBegin + kJfif + kTables},
        {"scan before the frame", kBegin + kScan + Frame('\xC0', 300, 200)},
        {"end before the frame", kBegin + "\xFF\xD9" + Frame('\xC0', 300, 200)},
        {"lossless frame", kBegin + Frame('\xC3', 300, 200)},
        {"arithmetic frame", kBegin + Frame('\xC9', 300, 200)},
        {"a segment without length", kBegin + "\xFF\xE0" + "\0\0"s + Frame('\xC0', 300, 200)},
        {"a segment past the end", kBegin + "\xFF\xE0\xFF\xFF" + Frame('\xC0', 300, 200)},
        {"cut in the frame header", kBegin + Frame('\xC0', 300, 200).substr(0, 8)},
        {"cut behind the size", kBegin + Frame('\xC0', 300, 200).substr(0, 9)},
        {"JPEG of no width", kBegin + Frame('\xC0', 0, 200)},
        {"JPEG of no height", kBegin + Frame('\xC0', 300, 0)},
        {"GIF of no width without a frame", "GIF89a\0\0\xC8\0\0\0\0;"s},
        {"GIF of no height that ends in its colours", "GIF89a\x2C\1\0\0\x80\0\0,,,"s},
        {"GIF of no size that ends in an extension", "GIF89a\0\0\0\0\0\0\0!\xFE\5,,"s},
        {"GIF whose frame has no size either",
         "GIF89a\0\0\0\0\0\0\0,\0\0\0\0\0\0\1\0\0\2\2\x44\1\0;"s},
        {"bytes behind the begin, but no frame", kBegin + "hello"},
        {"GIF of another version", Gif("GIF88a", "\x2C\1\xC8\0"s)},
        {"GIF cut in its size", "GIF89a\x2C\1\xC8"},
        {"a JPEG without frame that holds a GIF's begin",
         kBegin + Segment('\xFE', std::string(122, ' ') + Gif("GIF89a", "\x2C\1\xC8\0"s))},
    };
    for (const Row& row : rows)
        EXPECT_THAT(ErrorOf(row.bytes), HasSubstr("a.jpg")) << row.what;
    for (const Row& row : rows)
        EXPECT_EQ(ErrorOf(row.bytes).substr(0, 9), "picture: ") << row.what;
}

TEST_F(HeaderPictureLoaderTest, AMissingFileIsAPictureError)
{
    try {
        loader.Size("gone.gif");
        ADD_FAILURE() << "no error";
    } catch (const RunError& error) {
        EXPECT_EQ(error.kind, ErrorKind::picture);
        EXPECT_THAT(error.text, HasSubstr("gone.gif"));
    }
}

TEST_F(HeaderPictureLoaderTest, ReadsNoMoreThanTheHeaderNeeds)
{
    const std::string large(60'000, 'x');
    const std::string picture = kBegin + Segment('\xE1', large) + Segment('\xE1', large) +
                                Frame('\xC0', 300, 200) + std::string(2'000'000, 'x');
    EXPECT_EQ(SizeOf(picture), (PictureSize{300, 200}));
    EXPECT_LE(files.read, 4096U);
}

} // namespace
} // namespace kiv
