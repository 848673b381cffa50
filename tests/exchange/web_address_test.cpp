#include "exchange/web_address.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(WebAddress, PathsBecomeAddresses)
{
    EXPECT_EQ(WebAddress("https://h.example", ""), "https://h.example/");
    EXPECT_EQ(WebAddress("https://h.example/", "a.htm"), "https://h.example/a.htm");
    EXPECT_EQ(WebAddress("https://h.example/m", "news\\a b.htm"),
              "https://h.example/m/news/a%20b.htm");
    EXPECT_EQ(WebAddress("https://h.example/", "caf\xC3\xA9#1?&<%.htm"),
              "https://h.example/caf%C3%A9%231%3F%26%3C%25.htm");
}

TEST(WebAddress, Bases)
{
    for (const char* const base : {"http://h", "https://h.example/m/", "HTTPS://h:8080/~ann/"})
        EXPECT_EQ(BaseFault(base), "") << base;
    for (const char* const base :
         {"", "h.example", "ftp://h.example/", "https://", "https:///m", "https://h.example/a b",
          "https://h.example/?x", "https://h.example/#x", "https://h.example/\"",
          "https://h\xC3\xA9"})
        EXPECT_NE(BaseFault(base), "") << base;
}

} // namespace
} // namespace kiv
