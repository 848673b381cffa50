#include "shell/story_collector.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv::test {
namespace {

constexpr std::string_view kSource = "C:\\site\\_html.txt";
const TracedPage kPage{"a.htm", "C:\\site\\a.htm", 1};

LineStory StoryOf(int line, std::size_t size)
{
    LineStory story;
    story.sources = {{kSource, 3, 3}};
    story.before = "@@1";
    story.steps = {{"@@1", "the value", std::string(size, 'x'), {kSource, 1, 1}}};
    story.line = line;
    story.count = 1;
    return story;
}

TEST(StoryCollectorTest, TellsStepsWithoutTextsPastItsBound)
{
    const StoryQuestion question{"a"};
    StoryCollector collector(question, "C:\\site\\", StoryCollector::Takes::pages);
    ASSERT_TRUE(collector.BeginPage(kPage));
    collector.TakeLine(StoryOf(1, 64'000'000));
    collector.TakeLine(StoryOf(2, 4));
    const Stories& found = collector.Found();
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_FALSE(found.lines[0].is_brief);
    EXPECT_TRUE(found.lines[1].is_brief);
    ASSERT_EQ(found.lines[1].steps.size(), 1U);
    EXPECT_EQ(found.lines[1].steps[0].after, "");
    ASSERT_TRUE(found.lines[1].steps[0].from);
    EXPECT_EQ(found.lines[1].steps[0].from->first, 1);
}

TEST(StoryCollectorTest, CountsLinesThatItHasNoRoomFor)
{
    const StoryQuestion question{"a"};
    StoryCollector collector(question, "C:\\site\\", StoryCollector::Takes::pages, {.lines = 500});
    ASSERT_TRUE(collector.BeginPage(kPage));
    LineStory story = StoryOf(1, 0);
    story.count = 503;
    story.steps.clear();
    collector.TakeLine(story);
    EXPECT_EQ(collector.Found().lines.size(), 500U);
    EXPECT_EQ(collector.Found().left_out, 3U);
    EXPECT_EQ(collector.Found().line_count, 503);
}

TEST(StoryCollectorTest, OfTwoPagesAtOnePlaceTheLaterOneStays)
{
    const StoryQuestion question{"_html.txt"};
    StoryCollector collector(question, "C:\\site\\", StoryCollector::Takes::sources);
    for (int times = 0; times < 2; ++times) {
        ASSERT_TRUE(collector.BeginPage(kPage));
        collector.TakeLine(StoryOf(1, 4));
    }
    const Stories& found = collector.Found();
    ASSERT_EQ(found.lines.size(), 2U);
    EXPECT_EQ(found.lines[0].line, 0);
    EXPECT_EQ(found.lines[0].reason, "a later page of the same name is written over it");
    EXPECT_EQ(found.lines[1].line, 1);
}

} // namespace
} // namespace kiv::test
