// What is read of a story.
#include "shell/story_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::SizeIs;

using Kind = StoryPart::Kind;

/// A page of one story.
PageStories PageOf(PageStory story, std::vector<PageLine> lines)
{
    PageStories page;
    page.page = {"a.htm", "C:\\site\\a.htm"};
    page.folder = "C:\\site\\";
    page.stories.push_back(std::move(story));
    page.lines = std::move(lines);
    return page;
}

const ToldPlace kTemplate = {"C:\\site\\_template.txt", 4, 4};
const ToldPlace kList = {"C:\\site\\_html.txt", 2, 2};

TEST(StoryParts, SourceStepsResult)
{
    const PageStories page =
        PageOf({{kTemplate},
                "=2=<b>@TITLE</b>",
                {{"=2=", "kept", "<b>@TITLE</b>", {}}, {"@TITLE", "One", "<b>One</b>", kList}},
                1,
                ""},
               {{7, "<b>One</b>", 0, 1}});
    const std::vector<StoryPart> parts = PartsOf(page, 0);
    ASSERT_THAT(parts, SizeIs(4));
    EXPECT_EQ(parts[0].kind, Kind::source);
    EXPECT_EQ(parts[0].title, "_template.txt:4");
    EXPECT_EQ(parts[0].text, "=2=<b>@TITLE</b>");
    EXPECT_EQ(parts[0].place->file, kTemplate.file);
    EXPECT_EQ(parts[1].kind, Kind::step);
    EXPECT_EQ(parts[1].title, "=2=");
    EXPECT_EQ(parts[1].words, "kept");
    EXPECT_EQ(parts[1].text, "<b>@TITLE</b>");
    EXPECT_EQ(parts[1].change.put, 0U);
    EXPECT_EQ(parts[1].taken, "=2=");
    EXPECT_FALSE(parts[1].place);
    EXPECT_EQ(parts[2].text.substr(parts[2].change.from, parts[2].change.put), "One");
    EXPECT_EQ(parts[2].taken, ""); // something was put in its place
    EXPECT_EQ(parts[2].place->first, 2);
    EXPECT_EQ(parts[3].kind, Kind::result);
    EXPECT_EQ(parts[3].title, "a.htm:7");
    EXPECT_EQ(parts[3].text, "<b>One</b>");
}

TEST(StoryParts, OneOfManyLines)
{
    const PageStories page = PageOf({{{"C:\\site\\_html.txt", 3, 5}}, "<x>", {}, 3, ""},
                                    {{1, "a", 0, 1}, {2, "b", 0, 2}, {3, "c", 0, 3}});
    const std::vector<StoryPart> parts = PartsOf(page, 1);
    ASSERT_THAT(parts, SizeIs(2));
    EXPECT_EQ(parts[0].title, "_html.txt:3-5");
    EXPECT_EQ(parts[1].title, "a.htm:2");
    EXPECT_EQ(parts[1].words, "line 2 of the 3 that this makes");
    EXPECT_EQ(parts[1].text, "b");
}

TEST(StoryParts, FurtherSourcesAndNone)
{
    const std::vector<StoryPart> two =
        PartsOf(PageOf({{kTemplate, kList}, "a", {}, 1, ""}, {{1, "a", 0, 1}}), 0);
    ASSERT_THAT(two, SizeIs(3));
    EXPECT_EQ(two[1].title, "_html.txt:2");
    EXPECT_EQ(two[1].words, "went into it as well");
    EXPECT_EQ(two[1].text, "");
    EXPECT_EQ(two[1].place->file, kList.file);
    const std::vector<StoryPart> none = PartsOf(PageOf({{}, "a", {}, 1, ""}, {{1, "a", 0, 1}}), 0);
    ASSERT_THAT(none, SizeIs(2));
    EXPECT_EQ(none[0].kind, Kind::source);
    EXPECT_FALSE(none[0].place);
}

TEST(StoryParts, ALineThatWasNeverWritten)
{
    const std::vector<StoryPart> parts =
        PartsOf(PageOf({{kList}, "!++gone", {}, 0, "an error ended the build here: x"},
                       {{0, "!++gone", 0, 1}}),
                0);
    ASSERT_THAT(parts, SizeIs(2));
    EXPECT_EQ(parts[1].title, "a.htm");
    EXPECT_EQ(parts[1].words, "an error ended the build here: x");
    EXPECT_EQ(parts[1].text, "");
}

TEST(StoryParts, OfALongTextOnlyWhatIsAroundTheChange)
{
    const std::string before(10'000, '.');
    std::string after = before;
    after.replace(6000, 3, "new");
    const PageStories page =
        PageOf({{kList}, before, {{"n", "w", after, {}}}, 1, ""}, {{1, after, 0, 1}});
    const std::vector<StoryPart> parts = PartsOf(page, 0);
    EXPECT_EQ(parts[0].text, std::string(kMostShownOfText, '.') + "...");
    EXPECT_EQ(parts[1].text, "..." + std::string(200, '.') + "new" + std::string(200, '.') + "...");
    EXPECT_EQ(parts[1].text.substr(parts[1].change.from, parts[1].change.put), "new");
    EXPECT_EQ(parts[1].change.from, 203U);
    EXPECT_EQ(parts[2].text.size(), kMostShownOfText + 3);
}

TEST(StoryParts, AChangeAtTheEndOfALongText)
{
    const std::string before(1000, '.');
    const PageStories page =
        PageOf({{kList}, before, {{"n", "w", before + "end", {}}}, 1, ""}, {{1, before, 0, 1}});
    EXPECT_EQ(PartsOf(page, 0)[1].text, "..." + std::string(200, '.') + "end");
    EXPECT_EQ(PartsOf(page, 0)[1].change.from, 203U);
}

TEST(StoryParts, ALongChangeIsMarkedAsFarAsItIsShown)
{
    const std::string after(10'000, 'x');
    const PageStories page =
        PageOf({{kList}, "", {{"n", "w", after, {}}}, 1, ""}, {{1, after, 0, 1}});
    const StoryPart step = PartsOf(page, 0)[1];
    EXPECT_EQ(step.text.size(), kMostShownOfText + 3);
    EXPECT_EQ(step.change.from, 0U);
    EXPECT_EQ(step.change.put, kMostShownOfText);
}

TEST(StoryParts, PlacesAsOneSaysThemInTheFolder)
{
    EXPECT_EQ(PlaceWords({"C:\\site\\txt\\a.txt", 3, 3}, "c:\\SITE\\"), "txt\\a.txt:3");
    EXPECT_EQ(PlaceWords({"C:\\site\\a.txt", 3, 5}, "C:\\site\\"), "a.txt:3-5");
    EXPECT_EQ(PlaceWords({"C:\\sites\\a.txt", 3, 3}, "C:\\site\\"), "C:\\sites\\a.txt:3");
}

} // namespace
} // namespace kiv
