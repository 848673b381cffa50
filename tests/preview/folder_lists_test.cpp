// How long the names of a folder are taken for true.
#include "preview/folder_lists.h"
#include "tests/support/folders.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kiv {
namespace {

using std::chrono::seconds;

class FolderListsTest : public testing::Test {
  protected:
    FolderListsTest() { Put("a.gif"); }

    void Put(const std::string& name) { test::WriteBytes(folder_.Path() / name, "x"); }
    FolderLists::Names Names(int second)
    {
        NativeFault fault = NativeFault::none;
        return lists_.NamesIn(test::TextOf(folder_.Path()), fault, begin_ + seconds(second));
    }

    test::TemporaryFolder folder_;
    FolderLists lists_;
    const FolderLists::Instant begin_ = std::chrono::steady_clock::now();
};

TEST_F(FolderListsTest, ANameThatComesIsSeenAtOnce)
{
    EXPECT_EQ(Names(0)->size(), 1U);
    EXPECT_EQ(Names(10)->size(), 1U);
    Put("b.gif");
    EXPECT_EQ(Names(10)->size(), 2U);
}

#ifndef _WIN32 // where the library sets no folder's time
TEST_F(FolderListsTest, AFolderAtRestIsListedEveryFiveSeconds)
{
    const auto before = std::filesystem::last_write_time(folder_.Path());
    EXPECT_EQ(Names(0)->size(), 1U);
    const FolderLists::Names old = Names(3);
    Put("b.gif");
    std::filesystem::last_write_time(folder_.Path(), before); // a disk that tells nothing
    EXPECT_EQ(Names(4), old);
    EXPECT_EQ(Names(7), old);
    EXPECT_EQ(Names(8)->size(), 2U);
}

TEST_F(FolderListsTest, AStampThatIsYoungIsNotTrusted)
{
    const auto before = std::filesystem::last_write_time(folder_.Path());
    EXPECT_EQ(Names(0)->size(), 1U);
    Put("b.gif");
    std::filesystem::last_write_time(folder_.Path(), before); // the clock of the disk is coarse
    EXPECT_EQ(Names(1)->size(), 2U);
}
#endif

TEST_F(FolderListsTest, WhatCannotBeListedHasAReason)
{
    NativeFault fault = NativeFault::none;
    EXPECT_EQ(lists_.NamesIn(test::TextOf(folder_.Path() / "none"), fault), nullptr);
    EXPECT_EQ(fault, NativeFault::absent);
}

} // namespace
} // namespace kiv
