// What pages are called where all titles have words in common.
#include "exchange/page_titles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;

TEST(ShortTitles, LoseWhatMostOfThemEndOrBeginWith)
{
    EXPECT_THAT(ShortTitles({"Bread - The mill", "Flour - The mill", "How to get here - The mill"}),
                ElementsAre("Bread", "Flour", "How to get here"));
    EXPECT_THAT(ShortTitles({"The mill: Bread", "The mill: Flour"}), ElementsAre("Bread", "Flour"));
}

TEST(ShortTitles, StayWholeWhereNothingWouldBeLeft)
{
    EXPECT_THAT(ShortTitles({"a mill", " mill", "b mill", "c mill"}),
                ElementsAre("a", " mill", "b", "c"));
    EXPECT_THAT(ShortTitles({"Bread"}), ElementsAre("Bread"));
    EXPECT_THAT(ShortTitles({"Bread", "Flour and more"}), ElementsAre("Bread", "Flour and more"));
}

} // namespace
} // namespace kiv
