#include "preview/watcher.h"

#include "odd_drives.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace kiv {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class WatcherTest : public testing::Test {
  protected:
    WatcherTest() { drives_.Put("site/a.txt", "text"); }

    void Build()
    {
        const WatchedBuild build(watcher_);
        drives_.ReadFile("C:\\site\\a.txt");
    }
    Watcher::Tick Look()
    {
        now_ += milliseconds(200);
        return watcher_.Look(now_);
    }

    test::OddDrives drives_;
    Watcher watcher_{drives_};
    Watcher::Instant now_ = std::chrono::steady_clock::now();
};

TEST_F(WatcherTest, AChangeAtRestIsDue)
{
    Build();
    EXPECT_FALSE(Look().build);
    drives_.Put("site/a.txt", "another text");
    const Watcher::Tick moving = Look();
    EXPECT_FALSE(moving.build);
    EXPECT_EQ(moving.wait, milliseconds(100));
    const Watcher::Tick due = Look();
    EXPECT_TRUE(due.build);
    EXPECT_THAT(due.sources, ElementsAre("C:\\site\\a.txt"));
    Build();
    EXPECT_FALSE(Look().build);
}

TEST_F(WatcherTest, WhatCannotBeLookedAtIsToldOnceAndWhenItIsBack)
{
    Build();
    drives_.refused = {"C:\\site\\a.txt"};
    const Watcher::Tick away = Look();
    ASSERT_TRUE(away.refused);
    EXPECT_THAT(away.refused->text, testing::StartsWith("cannot look at C:\\site\\a.txt: "));
    EXPECT_EQ(away.refused->where.file, "C:\\site\\a.txt");
    EXPECT_FALSE(away.build);
    EXPECT_FALSE(Look().refused);
    drives_.refused.clear();
    const Watcher::Tick back = Look();
    EXPECT_TRUE(back.is_back);
    EXPECT_FALSE(back.build);
    EXPECT_FALSE(Look().is_back);
}

TEST_F(WatcherTest, ABuildThatFailedIsNotDoneOverForWhatItWrote)
{
    const auto build = [&](SourceWatch::Ended ended) {
        WatchedBuild watched(watcher_);
        const std::string text = drives_.ReadFile("C:\\site\\a.txt");
        drives_.WriteFile("C:\\site\\a.txt", text + "more");
        watched.EndsAs(ended);
    };
    build(SourceWatch::Ended::failed);
    EXPECT_FALSE(Look().build);
    build(SourceWatch::Ended::stopped);
    EXPECT_FALSE(Look().build);
    for (int i = 0; i < 3; ++i) {
        build(SourceWatch::Ended::whole);
        const Watcher::Tick tick = Look();
        EXPECT_TRUE(tick.build);
        EXPECT_THAT(tick.sources, ElementsAre("C:\\site\\a.txt"));
    }
    build(SourceWatch::Ended::whole);
    EXPECT_FALSE(Look().build) << "it never comes to rest";
}

TEST_F(WatcherTest, ABuildHinderedByAnotherProgramIsTriedAgainAFewTimes)
{
    // A build that fails, then looks of 200 ms until the next one: how many.
    const auto looks_until_next = [&](bool may_pass = true) {
        watcher_.Begin(now_);
        drives_.ReadFile("C:\\site\\a.txt");
        watcher_.End(SourceWatch::Ended::failed, now_, may_pass);
        for (int looks = 1; looks <= 200; ++looks) {
            const Watcher::Tick tick = Look();
            if (tick.build) {
                EXPECT_THAT(tick.sources, IsEmpty());
                return looks;
            }
        }
        return 0;
    };
    std::vector<int> looks;
    for (int i = 0; i < 6; ++i)
        looks.push_back(looks_until_next());
    EXPECT_THAT(looks, ElementsAre(5, 10, 20, 40, 80, 0));

    drives_.Put("site/a.txt", "another text"); // a save begins it anew
    EXPECT_FALSE(Look().build);
    EXPECT_TRUE(Look().build);
    EXPECT_EQ(looks_until_next(), 5);

    EXPECT_EQ(looks_until_next(false), 0);
}

TEST_F(WatcherTest, ItIsTheErrorThatTellsWhetherABuildIsTriedAgain)
{
    for (const bool may_pass : {false, true}) {
        RunError error(ErrorKind::file, "cannot write C:\\site\\a.htm: it is held");
        error.may_pass = may_pass;
        {
            WatchedBuild build(watcher_);
            drives_.ReadFile("C:\\site\\a.txt");
            build.FailsBy(error);
        }
        now_ = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        EXPECT_EQ(Look().build, may_pass);
    }
}

} // namespace
} // namespace kiv
