// What files are, by their names.
#include "preview/media_types.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(MediaTypes, ByTheExtensionInAnyCase)
{
    EXPECT_EQ(MediaTypeOf("a.htm").type, "text/html");
    EXPECT_EQ(MediaTypeOf("A.HTM").shown, ShownAs::page);
    EXPECT_EQ(MediaTypeOf("a.b.css").type, "text/css");
    EXPECT_EQ(MediaTypeOf("a.7z").type, "application/x-7z-compressed");
    EXPECT_EQ(MediaTypeOf("a.zip").type, "application/zip");
    EXPECT_EQ(MediaTypeOf("photo.JPG").type, "image/jpeg");
    EXPECT_EQ(MediaTypeOf("guest.asp").shown, ShownAs::script);
    EXPECT_EQ(MediaTypeOf("guest.php").shown, ShownAs::script);
    EXPECT_EQ(MediaTypeOf("_toc.txt").shown, ShownAs::text);
}

TEST(MediaTypes, WhateverAPageMayBeCalledIsKnown)
{
    for (const std::string_view name :
         {"a.asp", "a.html", "a.htm", "a.ram", "a.xml", "a.txt", "a.asx", "a.asf"})
        EXPECT_NE(MediaTypeOf(name).type, "application/octet-stream") << name;
}

TEST(MediaTypes, WhatIsNotKnownIsKept)
{
    for (const std::string_view name : {"", "a", "a.", "a.qqq", "htm", "a.htm.bak"})
        EXPECT_EQ(MediaTypeOf(name).type, "application/octet-stream") << name;
}

TEST(MediaTypes, TextIsUtf8WhenItsBytesAre)
{
    const MediaType& text = MediaTypeOf("a.txt");
    EXPECT_EQ(TextType(text, "plain"), "text/plain; charset=utf-8");
    EXPECT_EQ(TextType(text, "caf\xC3\xA9"), "text/plain; charset=utf-8");
    EXPECT_EQ(TextType(text, "caf\xE9"), "text/plain; charset=windows-1252");
}

} // namespace
} // namespace kiv
