// From when on pages are drafted for threads instead of being written at once.
#include "platform/page_queue.h"
#include "tests/support/memory_drives.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace kiv {
namespace {

/// Its drafts are refused, so every page is written by Commit in the end.
class CountedDrafts : public test::MemoryDrives {
  public:
    int drafts = 0;

  protected:
    std::unique_ptr<PageDraft> MakeDraft(const OutputFile& file, std::string_view bytes,
                                         bool is_former_known) override
    {
        ++drafts;
        return MemoryDrives::MakeDraft(file, bytes, is_former_known);
    }
};

class PageQueueTest : public testing::Test {
  protected:
    void HandOver(const std::string& name, std::string bytes)
    {
        const OutputFile file = drives.Open("C:\\" + name);
        queue.MayHold(file);
        queue.HandOver(file, bytes, {});
    }

    CountedDrafts drives;
    PageQueue queue{drives, ThreadLimits{2, false}};
};

TEST_F(PageQueueTest, TheFirstPageOfASmallRunIsWrittenAtOnce)
{
    queue.Expect(99);
    HandOver("a.htm", "1");
    EXPECT_EQ(drives.drafts, 0);
    EXPECT_EQ(drives.ReadFile("C:\\a.htm"), "1");
}

TEST_F(PageQueueTest, TheFirstPageOfALargeRunIsDrafted)
{
    queue.Expect(100);
    HandOver("a.htm", "1");
    EXPECT_EQ(drives.drafts, 1);
    queue.End();
    EXPECT_EQ(drives.ReadFile("C:\\a.htm"), "1");
}

TEST_F(PageQueueTest, WhatWasExpectedOfOneRunIsNotExpectedOfTheNext)
{
    queue.Expect(100);
    queue.End();
    HandOver("a.htm", "1");
    EXPECT_EQ(drives.drafts, 0);
}

TEST_F(PageQueueTest, APageThatWasLookedUpOnceMayBeHandedOverTwice)
{
    queue.Expect(100);
    const OutputFile other = drives.Open("C:\\other.htm");
    const OutputFile file = drives.Open("C:\\a.htm");
    std::string bytes = "0";
    queue.HandOver(other, bytes, {});
    queue.MayHold(file);
    for (const char* const text : {"1", "2"}) {
        bytes = text;
        queue.HandOver(file, bytes, {});
    }
    queue.End();
    EXPECT_EQ(drives.ReadFile("C:\\other.htm"), "0");
    EXPECT_EQ(drives.ReadFile("C:\\a.htm"), "2");
}

} // namespace
} // namespace kiv
