#include "preview/build_pacer.h"

#include <gtest/gtest.h>

#include <vector>

namespace kiv {
namespace {

using std::chrono::milliseconds;

class Pacing : public testing::Test {
  protected:
    /// A look so long after the one before.
    bool Builds(milliseconds later, const SourceWatch::Sight& sight)
    {
        now_ += later;
        advice_ = pacer_.After(sight, now_);
        return advice_.build;
    }

    static SourceWatch::Sight Changed() { return {.changed = {"C:\\a.txt"}}; }
    static SourceWatch::Sight Moving() { return {.changed = {"C:\\a.txt"}, .is_moving = true}; }
    static SourceWatch::Sight Gone() { return {.changed = {"C:\\a.txt"}, .is_missing = true}; }

    BuildPacer pacer_;
    BuildPacer::Instant now_;
    BuildPacer::Advice advice_;
};

TEST_F(Pacing, NothingIsBuiltWhileNothingChanges)
{
    EXPECT_FALSE(Builds(milliseconds(200), {}));
    EXPECT_EQ(advice_.wait, milliseconds(200));
}

TEST_F(Pacing, ASaveIsBuiltWhenItHasComeToRest)
{
    EXPECT_FALSE(Builds(milliseconds(200), Moving()));
    EXPECT_EQ(advice_.wait, milliseconds(100));
    EXPECT_FALSE(Builds(milliseconds(100), Moving()));
    EXPECT_TRUE(Builds(milliseconds(100), Changed()));
}

TEST_F(Pacing, WhatHasGoneIsWaitedForASecond)
{
    EXPECT_FALSE(Builds(milliseconds(200), Gone()));
    EXPECT_FALSE(Builds(milliseconds(999), Gone()));
    EXPECT_TRUE(Builds(milliseconds(1), Gone()));
    EXPECT_FALSE(Builds(milliseconds(200), Gone())) << "it has gone anew";
}

TEST_F(Pacing, WhatHasComeBackIsNotWaitedFor)
{
    EXPECT_FALSE(Builds(milliseconds(200), Gone()));
    EXPECT_FALSE(Builds(milliseconds(100), Moving()));
    EXPECT_TRUE(Builds(milliseconds(100), Changed()));
}

TEST_F(Pacing, ASourceThatNeverRestsIsBuiltAllTheSame)
{
    EXPECT_FALSE(Builds(milliseconds(200), Moving()));
    EXPECT_FALSE(Builds(milliseconds(2999), Moving()));
    EXPECT_TRUE(Builds(milliseconds(1), Moving()));
    EXPECT_FALSE(Builds(milliseconds(100), Moving())) << "it is waited for anew";
}

TEST_F(Pacing, AChangeThatIsTakenBackIsForgotten)
{
    EXPECT_FALSE(Builds(milliseconds(200), Moving()));
    EXPECT_FALSE(Builds(milliseconds(2900), {}));
    EXPECT_FALSE(Builds(milliseconds(200), Moving()));
}

/// Looks one after the other, in microseconds, and the rest after the last one.
struct LooksRow {
    std::vector<int> looks;
    milliseconds rest;
};

TEST(BuildPacer, LooksAreRarerWhereTheyTakeLonger)
{
    const LooksRow rows[] = {
        {{10, 10, 10}, milliseconds(200)},
        {{800, 800, 800}, milliseconds(200)},
        {{2000, 2000, 2000}, milliseconds(500)},
        {{90'000, 90'000, 90'000}, milliseconds(800)},
        {{90'000}, milliseconds(200)},               // one says nothing yet
        {{90'000, 90'000}, milliseconds(200)},       // nor do two
        {{10, 90'000, 90'000}, milliseconds(200)},   // interrupted twice
        {{10, 2000, 2400, 2200}, milliseconds(500)}, // the files have become more
        {{2000, 2000, 2000, 10}, milliseconds(200)}, // and fewer
    };
    for (const LooksRow& row : rows) {
        BuildPacer pacer;
        BuildPacer::Duration rest{};
        for (const int look : row.looks)
            rest = pacer.RestAfter(std::chrono::microseconds(look));
        EXPECT_EQ(rest, row.rest) << testing::PrintToString(row.looks);
    }
}

} // namespace
} // namespace kiv
