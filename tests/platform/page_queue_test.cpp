// From when on pages are drafted for threads instead of being written at once.
#include "platform/page_queue.h"
#include "tests/support/memory_drives.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace kiv {
namespace {

/// Its drafts are refused, so every page is written by Commit in the end.
class CountedDrafts : public test::MemoryDrives {
  public:
    std::string PlaceOf(const OutputFile& file) override
    {
        ++places;
        return MemoryDrives::PlaceOf(file);
    }

    int drafts = 0;
    int places = 0; // that were looked up

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

TEST_F(PageQueueTest, APageIsLookedUpOnceAndMayBeHandedOverTwice)
{
    PageQueue waiting{drives, ThreadLimits{1, true}};
    std::string bytes = "0";
    waiting.HandOver(drives.Open("C:\\other.htm"), bytes, {});
    const OutputFile file = drives.Open("C:\\a.htm");
    drives.places = 0;
    EXPECT_FALSE(waiting.MayHold(file));
    bytes = "1";
    waiting.HandOver(file, bytes, {});
    EXPECT_EQ(drives.places, 1);
    bytes = "2";
    waiting.HandOver(file, bytes, {});
    waiting.End();
    EXPECT_EQ(drives.ReadFile("C:\\other.htm"), "0");
    EXPECT_EQ(drives.ReadFile("C:\\a.htm"), "2");
}

/// Its first draft is refused, all others get their places at once.
class OneRefused : public test::MemoryDrives {
  public:
    void Commit(const OutputFile& file, std::string_view /*bytes*/) override { Place(file.path); }
    std::vector<std::string> AllPlaced()
    {
        const std::lock_guard lock(mutex_);
        return placed_;
    }

  protected:
    std::unique_ptr<PageDraft> MakeDraft(const OutputFile& file, std::string_view bytes,
                                         bool is_former_known) override
    {
        return std::make_unique<Draft>(file, bytes, is_former_known, *this,
                                       std::exchange(is_first_, false));
    }

  private:
    class Draft : public PageDraft {
      public:
        Draft(const OutputFile& file, std::string_view bytes, bool is_former_known,
              OneRefused& drives, bool is_refused)
            : PageDraft(file, bytes, is_former_known), drives_(drives), is_refused_(is_refused)
        {
        }

      protected:
        PreparedPage Make() override
        {
            return {is_refused_ ? PreparedPage::Outcome::failed : PreparedPage::Outcome::drafted};
        }
        bool Put() override
        {
            drives_.Place(File().path);
            return true;
        }

      private:
        OneRefused& drives_;
        bool is_refused_;
    };

    void Place(const std::string& path)
    {
        const std::lock_guard lock(mutex_);
        placed_.push_back(path);
    }

    bool is_first_ = true;
    std::mutex mutex_;
    std::vector<std::string> placed_;
};

// The refusal may be met while room is made for another page.
TEST(FullPageQueue, NoPageGetsItsPlaceBeforeThoseThatWait)
{
    for (const std::size_t threads : {1U, 2U, 8U}) {
        OneRefused refusing;
        PageQueue queue{refusing, ThreadLimits{threads, true}};
        std::vector<std::string> expected;
        for (std::size_t number = 1; number <= PageQueue::kMostPages + 1; ++number) {
            expected.push_back("C:\\p" + std::to_string(number) + ".htm");
            std::string bytes = "x";
            queue.HandOver(refusing.Open(expected.back()), bytes, {});
        }
        EXPECT_EQ(refusing.AllPlaced(), expected) << threads;
        queue.End();
        EXPECT_EQ(refusing.AllPlaced(), expected) << threads;
    }
}

} // namespace
} // namespace kiv
