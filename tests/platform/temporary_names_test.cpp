#include "platform/temporary_names.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(TemporaryNames, TellWhoseTheyAre)
{
    EXPECT_EQ(ProcessOfTemporary(NewTemporaryName(12)), 12);
    EXPECT_NE(NewTemporaryName(12), NewTemporaryName(12));
    EXPECT_FALSE(ReadSwapName(NewTemporaryName(12)));
    for (const char* const other :
         {"", ".kiv-notes.tmp", ".kiv-0-1.tmp", ".kiv--1-1.tmp", ".kiv-1-1.txt", ".kiv-1-.tmp",
          ".kiv-1-1-2.tmp", ".kiv-1-1-2-3.tmp", ".kiv-1-1-2-3-.tmp", ".kiv-1-1-x-3-a.tmp",
          "a.kiv-1-1.tmp", ".kiv-1-1.tmp.tmp", ".kiv-1-1-.tmp"}) {
        EXPECT_EQ(ProcessOfTemporary(other), 0) << other;
        EXPECT_FALSE(ReadSwapName(other)) << other;
        EXPECT_FALSE(IsOwnName(other)) << other;
    }
}

TEST(TemporaryNames, ASwapTellsWhatItMayHold)
{
    const std::string name = NewSwapName(12, "my-list.tmp", "old", "new");
    EXPECT_EQ(ProcessOfTemporary(name), 12);
    const auto swap = ReadSwapName(name);
    ASSERT_TRUE(swap);
    EXPECT_EQ(swap->name, "my-list.tmp");
    EXPECT_EQ(swap->old_mark, MarkOf("old"));
    EXPECT_EQ(swap->draft_mark, MarkOf("new"));
    EXPECT_NE(swap->old_mark, swap->draft_mark);
}

TEST(TemporaryNames, ASwapHasRoomForPartOfALongName)
{
    std::string accents = "x";
    while (accents.size() < 250)
        accents += "\xC3\xA9";
    const std::string name = NewSwapName(2147483647, accents, "old", "new");
    EXPECT_LE(name.size(), 249U); // ".saved" goes behind it
    const auto swap = ReadSwapName(name);
    ASSERT_TRUE(swap);
    EXPECT_EQ(swap->name, accents.substr(0, 149)); // whole characters
}

} // namespace
} // namespace kiv
