#include "text/html_text.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(HtmlText, MarksWhatHtmlReads)
{
    EXPECT_EQ(HtmlText("a<b> & \"c\""), "a&lt;b&gt; &amp; &quot;c&quot;");
    EXPECT_EQ(HtmlText("&amp;"), "&amp;amp;");
}

TEST(HtmlText, LeavesOtherBytes)
{
    EXPECT_EQ(HtmlText("it's\t\xE9 \xC3\xA9\r\n"), "it's\t\xE9 \xC3\xA9\r\n");
    EXPECT_EQ(HtmlText(""), "");
}

} // namespace
} // namespace kiv
