#include "preview/build_pacer.h"

#include <gtest/gtest.h>

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

TEST(BuildPacer, LooksAreRarerWhereTheyTakeLonger)
{
    using std::chrono::microseconds;
    EXPECT_EQ(BuildPacer::RestAfter(microseconds(10)), milliseconds(200));
    EXPECT_EQ(BuildPacer::RestAfter(microseconds(800)), milliseconds(200));
    EXPECT_EQ(BuildPacer::RestAfter(microseconds(2000)), milliseconds(500));
    EXPECT_EQ(BuildPacer::RestAfter(microseconds(90'000)), milliseconds(1000));
}

} // namespace
} // namespace kiv
