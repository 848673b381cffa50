#include "exchange/sound_jpeg.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

using namespace std::string_literals;

/// A segment of tables: one table with so many codes of each of two lengths.
std::string Tables(int first, int second)
{
    std::string counts(16, '\0');
    counts[0] = static_cast<char>(first);
    counts[15] = static_cast<char>(second);
    const std::size_t size = 2 + 17 + static_cast<std::size_t>(first + second);
    return "\xFF\xC4"s + static_cast<char>(size / 256) + static_cast<char>(size % 256) + '\0' +
           counts + std::string(static_cast<std::size_t>(first + second), 'x');
}

TEST(SoundJpeg, NotesAreLeftOut)
{
    const std::string frame = "\xFF\xC0\0\4ab"s;
    const std::string rest = "\xFF\xDA\0\4cd\xFF\xFE\0\4ef"s; // behind the scan all stays
    EXPECT_EQ(PlainJpeg("\xFF\xD8\xFF\xE0\0\4gh\xFF\xE1\0\6\xFF\xC4ij"s + "\xFF\xFE\0\3k"s + frame +
                        "\xFF\xEE\0\4lm"s + rest),
              "\xFF\xD8\xFF\xE0\0\4gh"s + frame + "\xFF\xEE\0\4lm"s + rest);
    for (const std::string& other :
         {""s, "GIF89a"s, "\xFF\xD8"s, "\xFF\xD8\xFF"s, "\xFF\xD8\xFF\xE1\0\1x"s, "\xFF\xD8xyz"s})
        EXPECT_EQ(PlainJpeg(other), other);
    EXPECT_EQ(PlainJpeg("\xFF\xD8\xFF\xE1\xFF\xFFx"s), "\xFF\xD8"); // cut off
}

TEST(SoundJpeg, NoTableHasMoreCodesThanThereAre)
{
    EXPECT_TRUE(HasSoundTables(""));
    EXPECT_TRUE(HasSoundTables("\xFF\xD8" + Tables(2, 254)));
    EXPECT_FALSE(HasSoundTables("\xFF\xD8" + Tables(2, 255)));
    EXPECT_FALSE(HasSoundTables("\xFF\xD8" + Tables(2, 3) + Tables(100, 200)));
    EXPECT_TRUE(HasSoundTables("\xFF\xD8" + Tables(2, 254).substr(0, 9))); // cut off
    EXPECT_TRUE(HasSoundTables("\xFF\xC4"));
    // A second table in the segment of the first.
    std::string two = Tables(1, 1);
    two[3] = static_cast<char>(2 + 19 + 17);
    EXPECT_FALSE(HasSoundTables(two + '\1' + std::string(16, '\x7F')));
}

} // namespace
} // namespace kiv
