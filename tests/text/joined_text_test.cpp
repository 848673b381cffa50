#include "text/joined_text.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(JoinedText, PutsPiecesTogether)
{
    EXPECT_EQ(Joined({}), "");
    EXPECT_EQ(Joined({"a", "", "b c", "\r\n"}), "ab c\r\n");
    std::string text = "a";
    Append(text, {"b", "", "c"});
    EXPECT_EQ(text, "abc");
}

TEST(JoinedText, PutsLineEndsBetweenLines)
{
    EXPECT_EQ(JoinedLines({}), "");
    EXPECT_EQ(JoinedLines({"a"}), "a");
    EXPECT_EQ(JoinedLines({"a", "", "b"}), "a\r\n\r\nb");
}

} // namespace
} // namespace kiv
