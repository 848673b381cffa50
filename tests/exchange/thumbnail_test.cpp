#include "exchange/thumbnail.h"

#include "platform/run_error.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>

namespace kiv {
namespace {

std::string Little(unsigned number, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text.push_back(static_cast<char>(number >> (8 * i) & 0xFFU));
    return text;
}

/// A BMP of one colour.
std::string Bmp(unsigned width, unsigned height)
{
    const unsigned row = (width * 3 + 3) / 4 * 4;
    std::string bmp = "BM" + Little(54 + row * height, 4) + Little(0, 4) + Little(54, 4) +
                      Little(40, 4) + Little(width, 4) + Little(height, 4) + Little(1, 2) +
                      Little(24, 2);
    bmp.resize(54, '\0');
    return bmp + std::string(row * height, '\x80');
}

/// The sides that the JPEG's frame says, as "width x height".
std::string SidesIn(const std::string& jpeg)
{
    const std::size_t at = jpeg.find("\xFF\xC0");
    if (at == std::string::npos || at + 9 > jpeg.size())
        return "";
    const auto number = [&](std::size_t from) {
        return static_cast<unsigned char>(jpeg[from]) * 256 +
               static_cast<unsigned char>(jpeg[from + 1]);
    };
    return std::to_string(number(at + 7)) + " x " + std::to_string(number(at + 5));
}

TEST(Thumbnail, TheLongerSideIsCut)
{
    EXPECT_EQ(SidesIn(MakeThumbnail(Bmp(400, 300), {.size = 200})), "200 x 150");
    EXPECT_EQ(SidesIn(MakeThumbnail(Bmp(301, 400), {.size = 100})), "75 x 100");
    EXPECT_EQ(SidesIn(MakeThumbnail(Bmp(600, 2), {.size = 100})), "100 x 1"); // never none
    EXPECT_EQ(SidesIn(MakeThumbnail(Bmp(40, 30), {.size = 200})), "40 x 30"); // never larger
    EXPECT_EQ(SidesIn(MakeThumbnail(Bmp(1, 1), {.size = 1})), "1 x 1");
}

#ifndef _WIN32
// Somebody else's opinion on the sides: "-resize 100x100>" makes nothing larger, either.
TEST(Thumbnail, SidesAreThoseThatImageMagickGives)
{
    constexpr const char* kConvert = "/usr/bin/convert";
    if (!std::filesystem::exists(kConvert))
        GTEST_SKIP() << "ImageMagick is not installed";
    constexpr struct {
        unsigned width;
        unsigned height;
    } rows[] = {{400, 300}, {301, 400}, {333, 500}, {199, 201}, {640, 7},  {3, 600},
                {201, 199}, {641, 480}, {487, 323}, {101, 100}, {99, 100}, {150, 1}};
    std::string command = kConvert;
    for (const auto& row : rows)
        command +=
            " -size " + std::to_string(row.width) + "x" + std::to_string(row.height) + " xc:gray";
    command += " -resize '100x100>' -format '%w x %h\\n' info:";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    ASSERT_TRUE(pipe);
    std::string said(1000, '\0');
    said.resize(std::fread(said.data(), 1, said.size(), pipe.get()));
    std::istringstream lines(said);
    for (const auto& row : rows) {
        std::string sides;
        std::getline(lines, sides);
        EXPECT_EQ(SidesIn(MakeThumbnail(Bmp(row.width, row.height), {.size = 100})), sides)
            << row.width << " x " << row.height;
    }
}
#endif

TEST(Thumbnail, TurnedAsTheCameraWasHeld)
{
    using namespace std::string_literals;
    std::string jpeg = MakeThumbnail(Bmp(40, 30), {});
    jpeg.insert(2, "\xFF\xE1\0\42Exif\0\0MM\0*\0\0\0\10\0\1\1\22\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s);
    EXPECT_EQ(SidesIn(MakeThumbnail(jpeg, {.size = 20})), "15 x 20");
}

TEST(Thumbnail, BearsItsMark)
{
    const std::string picture = Bmp(4, 3);
    const std::string thumbnail = MakeThumbnail(picture, {.size = 2, .quality = 50});
    const std::string mark = ThumbnailMark(picture, {.size = 2, .quality = 50});
    EXPECT_EQ(MarkOfThumbnail(thumbnail.substr(0, kThumbnailHead)), mark);
    EXPECT_EQ(MakeThumbnail(picture, {.size = 2, .quality = 50}), thumbnail);
    EXPECT_NE(ThumbnailMark(picture, {.size = 3, .quality = 50}), mark);
    EXPECT_NE(ThumbnailMark(picture, {.size = 2, .quality = 51}), mark);
    EXPECT_NE(ThumbnailMark(Bmp(4, 4), {.size = 2, .quality = 50}), mark);
    // A thumbnail of a thumbnail is one, and a comment that only mentions the words is no mark.
    EXPECT_NE(MakeThumbnail(thumbnail, {}), "");
    for (const std::string& other :
         {std::string(), std::string("GIF89a kiv thumbnail 1"),
          std::string("\xFF\xD8 kiv thumbnail 1"), thumbnail.substr(0, 20)})
        EXPECT_EQ(MarkOfThumbnail(other), "");
}

TEST(Thumbnail, WhatIsNoPicture)
{
    const std::string bmp = Bmp(40000, 1);
    for (const std::string& bytes :
         {std::string(), std::string("text"), std::string("GIF89a"), std::string("\xFF\xD8\xFF"),
          bmp.substr(0, 54).replace(22, 4, Little(40000, 4)),
          MakeThumbnail(Bmp(8, 8), {}).substr(0, 100)})
        try {
            MakeThumbnail(bytes, {});
            ADD_FAILURE() << bytes.size();
        } catch (const RunError& error) {
            EXPECT_EQ(error.kind, ErrorKind::picture);
            EXPECT_NE(error.hint, "");
        }
}

// Bytes that go astray may give another picture or an error, and nothing else.
TEST(Thumbnail, HostileBytes)
{
    const std::string whole = MakeThumbnail(Bmp(24, 16), {});
    unsigned state = 1;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string bytes = whole;
        state = state * 1664525U + 1013904223U;
        bytes[at] = static_cast<char>(state >> 24U);
        try {
            MakeThumbnail(bytes, {.size = 8});
        } catch (const RunError&) {
            continue;
        }
    }
}

} // namespace
} // namespace kiv
