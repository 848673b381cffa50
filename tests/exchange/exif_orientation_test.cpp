#include "exchange/exif_orientation.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv {
namespace {

using namespace std::string_literals;

/// A JPEG's beginning whose second segment is Exif data: one entry, the orientation.
std::string Jpeg(const std::string& entry, bool high_first = true)
{
    const std::string tiff = high_first ? "MM\0*\0\0\0\10\0\1"s : "II*\0\10\0\0\0\1\0"s;
    const std::string exif = "Exif\0\0"s + tiff + entry + "\0\0\0\0"s;
    return "\xFF\xD8\xFF\xE0\0\4xx\xFF\xE1\0"s + static_cast<char>(exif.size() + 2) + exif;
}

TEST(ExifOrientation, BothByteOrders)
{
    EXPECT_EQ(ExifOrientation(Jpeg("\1\22\0\3\0\0\0\1\0\6\0\0"s)), 6);
    EXPECT_EQ(ExifOrientation(Jpeg("\22\1\3\0\1\0\0\0\10\0\0\0"s, false)), 8);
}

TEST(ExifOrientation, UprightWhereNothingElseIsSaid)
{
    EXPECT_EQ(ExifOrientation(""), 1);
    EXPECT_EQ(ExifOrientation("GIF89a"), 1);
    EXPECT_EQ(ExifOrientation("\xFF\xD8\xFF\xD9"), 1);
    EXPECT_EQ(ExifOrientation(Jpeg("\1\22\0\3\0\0\0\1\0\0\0\0"s)), 1);  // 0
    EXPECT_EQ(ExifOrientation(Jpeg("\1\22\0\3\0\0\0\1\0\11\0\0"s)), 1); // 9
    EXPECT_EQ(ExifOrientation(Jpeg("\1\23\0\3\0\0\0\1\0\6\0\0"s)), 1);  // another entry
}

TEST(ExifOrientation, CutOffAnywhere)
{
    const std::string whole = Jpeg("\1\22\0\3\0\0\0\1\0\6\0\0"s);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const int orientation = ExifOrientation(whole.substr(0, size));
        EXPECT_TRUE(orientation == 1 || orientation == 6) << size;
    }
}

// A directory far behind the end, entries without number, a segment of no size.
TEST(ExifOrientation, NonsensePlaces)
{
    EXPECT_EQ(ExifOrientation("\xFF\xD8\xFF\xE1\0\20Exif\0\0MM\0*\xFF\xFF\xFF\xFF"s), 1);
    EXPECT_EQ(ExifOrientation("\xFF\xD8\xFF\xE1\0\22Exif\0\0MM\0*\0\0\0\10\xFF\xFF"s), 1);
    EXPECT_EQ(ExifOrientation("\xFF\xD8\xFF\xE1\0\0Exif"s), 1);
    EXPECT_EQ(ExifOrientation("\xFF\xD8\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s), 1);
}

} // namespace
} // namespace kiv
