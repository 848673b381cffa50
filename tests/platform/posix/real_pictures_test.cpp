// Pictures made by ImageMagick, measured by the loader and by ImageMagick's own decoder. Without
// that program there is nothing to compare with, and the tests are skipped.
#include "platform/picture_loader.h"
#include "platform/run_error.h"
#include "tests/platform/picture_files.h"
#include "tests/support/folders.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kiv {
namespace {

using namespace std::string_literals;

/// One way to make a picture: arguments of `convert` in front of the file's name.
struct Recipe {
    std::string file;
    std::string arguments;
};

const std::vector<Recipe>& Recipes()
{
    // "plasma:" gives noise, so the pictures hold long scans with marker-like bytes in them.
    static const std::vector<Recipe> recipes = {
        {"baseline.jpg", "-size 123x45 plasma: -interlace none"},
        {"progressive.jpg", "-size 321x200 plasma: -interlace plane"},
        {"grey.jpg", "-size 99x1 plasma: -colorspace gray"},
        {"grey_progressive.jpg", "-size 31x77 plasma: -colorspace gray -interlace plane"},
        {"cmyk.jpg", "-size 64x48 plasma: -colorspace CMYK"},
        {"cmyk_progressive.jpg", "-size 48x64 plasma: -colorspace CMYK -interlace plane"},
        {"full_chroma.jpg", "-size 17x19 plasma: -sampling-factor 4:4:4"},
        {"half_chroma.jpg", "-size 19x17 plasma: -sampling-factor 4:2:2"},
        {"best.jpg", "-size 200x150 plasma: -quality 100"},
        {"worst.jpg", "-size 200x151 plasma: -quality 1"},
        {"comment.jpg", "-size 50x60 plasma: -set comment 'a comment of the picture'"},
        {"one_pixel.jpg", "-size 1x1 xc:red"},
        {"wide.jpg", "-size 5000x2 xc:red"},
        {"high.jpg", "-size 2x5000 xc:red"},
        {"no_density.jpg", "-size 40x30 plasma: -density 0x0"},
        {"dense.jpg", "-size 40x31 plasma: -density 300x300 -units PixelsPerInch"},
        {"plain87.gif", "-size 123x45 plasma: GIF87:"},
        {"plain.gif", "-size 45x123 plasma: -colors 256"},
        {"two_colours.gif", "-size 7x5 xc:red -colors 2"},
        {"transparent.gif", "-size 30x20 xc:none"},
        {"interlaced.gif", "-size 60x50 plasma: -interlace GIF"},
        {"animated.gif", "-delay 10 -size 40x30 plasma: plasma: plasma: -loop 0"},
        {"small_first_frame.gif",
         "-page 90x80+20+10 -size 10x12 xc:red -page 90x80+0+0 -size 90x80 xc:blue"},
        {"comment.gif", "-size 20x21 plasma: -set comment 'a comment'"},
        {"one_pixel.gif", "-size 1x1 xc:red"},
        {"wide.gif", "-size 6000x1 xc:red"},
        {"plain.png", "-size 33x44 plasma: -depth 8"},
        {"grey.png", "-size 44x33 plasma: -colorspace gray"},
        {"palette.png", "-size 21x34 plasma: -colors 16 -type Palette"},
        {"transparent.png", "-size 30x20 xc:none -interlace PNG"},
        {"one_pixel.png", "-size 1x1 xc:red"},
        {"plain.bmp", "-size 33x44 plasma:"},
        {"palette.bmp", "-size 44x33 plasma: -colors 16 -type Palette"},
    };
    return recipes;
}

/// The first of these names that ImageMagick answers to: they differ from version to version.
std::string ProgramOf(const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        if (std::system((name + " -version >/dev/null 2>&1").c_str()) == 0)
            return name;
    return {};
}

std::string OutputOf(const std::string& command)
{
    std::string output;
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::array<char, 256> part{};
    while (pipe != nullptr && fgets(part.data(), part.size(), pipe.get()) != nullptr)
        output += part.data();
    return output;
}

class RealPictures : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        const std::string convert = ProgramOf({"magick", "/usr/bin/convert"});
        const std::string identify = ProgramOf({"magick identify", "/usr/bin/identify"});
        if (convert.empty() || identify.empty())
            return;
        made_ = std::make_unique<Made>();
        for (const Recipe& recipe : Recipes()) {
            const std::string path = (made_->folder.Path() / recipe.file).string();
            // "GIF87:" in front of the name asks for the older version.
            const bool has_format = recipe.arguments.ends_with("GIF87:");
            const std::string command =
                convert + " " + recipe.arguments + (has_format ? "" : " ") + path + " 2>/dev/null";
            ASSERT_EQ(std::system(command.c_str()), 0) << command;
            // The page's size is that of a GIF's screen; a JPEG has none.
            const std::string format = recipe.file.ends_with(".gif") ? "%W %H\\n" : "%w %h\\n";
            const std::string said =
                OutputOf(identify + " -format '" + format + "' '" + path + "[0]'");
            PictureSize size;
            ASSERT_EQ(std::sscanf(said.c_str(), "%d %d", &size.width, &size.height), 2) << said;
            made_->pictures.push_back({recipe.file, test::ReadBytes(path), size});
        }
    }

    static void TearDownTestSuite() { made_.reset(); }

    void SetUp() override
    {
        if (made_ == nullptr)
            GTEST_SKIP() << "ImageMagick is not installed";
    }

    struct Picture {
        std::string file;
        std::string bytes;
        PictureSize size; // as ImageMagick says
    };

    struct Made {
        test::TemporaryFolder folder;
        std::vector<Picture> pictures;
    };

    PictureSize SizeOf(const std::string& bytes)
    {
        files.pictures["a.jpg"] = bytes;
        files.read = 0;
        return loader.Size("a.jpg");
    }

    /// "" when the bytes have the size that is wanted, else what is wrong.
    std::string WrongWith(const std::string& bytes, const PictureSize& wanted)
    {
        try {
            const PictureSize size = SizeOf(bytes);
            return size == wanted ? ""
                                  : std::to_string(size.width) + "x" + std::to_string(size.height);
        } catch (const RunError& error) {
            return std::string(KindName(error.kind)) + ": " + error.text;
        }
    }

    static std::unique_ptr<Made> made_;
    PictureFiles files;
    HeaderPictureLoader loader{files};
};

std::unique_ptr<RealPictures::Made> RealPictures::made_;

TEST_F(RealPictures, HaveTheSizeThatImageMagickSays)
{
    EXPECT_EQ(made_->pictures.size(), Recipes().size());
    for (const Picture& picture : made_->pictures)
        EXPECT_EQ(WrongWith(picture.bytes, picture.size), "") << picture.file;
}

TEST_F(RealPictures, AreReadNoFurtherThanTheirHeader)
{
    for (const Picture& picture : made_->pictures) {
        SizeOf(picture.bytes);
        EXPECT_LE(files.read, 4096U) << picture.file;
    }
}

TEST_F(RealPictures, CutShortHaveTheirSizeOrAnError)
{
    for (const Picture& picture : made_->pictures) {
        bool readable = false;
        const std::size_t all = picture.bytes.size();
        for (std::size_t length = 0; length < all; length += length < 2000 ? 1 : 997) {
            const std::string wrong = WrongWith(picture.bytes.substr(0, length), picture.size);
            // Once the header is whole, what is cut off behind it does not count.
            EXPECT_TRUE(wrong.empty() || (!readable && wrong.starts_with("picture: ")))
                << picture.file << " cut to " << length << ": " << wrong;
            readable = readable || wrong.empty();
        }
        EXPECT_NE(WrongWith(picture.bytes.substr(0, 9), picture.size), "") << picture.file;
    }
}

TEST_F(RealPictures, WithDataOfApplicationsOfEveryLength)
{
    // Each segment holds a whole smaller picture, as an embedded thumbnail does, and then bytes
    // that look like markers.
    const std::string* thumbnail = nullptr;
    for (const Picture& picture : made_->pictures)
        if (picture.file == "full_chroma.jpg")
            thumbnail = &picture.bytes;
    ASSERT_NE(thumbnail, nullptr);
    for (const Picture& picture : made_->pictures) {
        if (!picture.file.ends_with(".jpg"))
            continue;
        for (const std::size_t length :
             {0U, 1U, 2U, 253U, 254U, 255U, 509U, 510U, 511U, 512U, 32765U, 32766U, 65533U}) {
            std::string content = "Exif\0\0"s + *thumbnail;
            while (content.size() < length)
                content += "\xFF\xC0\0\x11\x08\0\1\0\1"s;
            content.resize(length);
            const std::size_t counted = length + 2; // the length counts itself
            const std::string segment = "\xFF\xE1"s + static_cast<char>(counted / 256) +
                                        static_cast<char>(counted % 256) + content;
            const std::string with =
                picture.bytes.substr(0, 2) + segment + segment + picture.bytes.substr(2);
            EXPECT_EQ(WrongWith(with, picture.size), "") << picture.file << " behind " << length;
            EXPECT_LE(files.read, 8192U) << picture.file << " behind " << length;
        }
    }
}

} // namespace
} // namespace kiv
