// What browsers are told of changes and builds.
#include "platform/native_files.h"
#include "preview/content_marks.h"
#include "preview/live_state.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

class LiveStates : public testing::Test {
  protected:
    void Put(const std::string& name, const std::string& bytes)
    {
        test::WriteBytes(folder_.Path() / name, bytes);
    }
    void Watch(const std::string& name)
    {
        const std::string native = test::TextOf(folder_.Path() / name);
        live_.Watch("/" + name, {native, NativeStamp(native), MarkOfFile(native)});
    }
    /// Moves a file's time on; its content stays.
    void Touch(const std::string& name)
    {
        touched_ += std::chrono::seconds(10);
        std::filesystem::last_write_time(folder_.Path() / name, touched_);
    }
    static BuildNews Made(std::set<std::string> pages)
    {
        BuildNews news;
        news.made = std::move(pages);
        return news;
    }
    void Build(BuildNews news)
    {
        live_.BuildBegins();
        live_.BuildEnds(std::move(news));
    }

    test::TemporaryFolder folder_;
    std::filesystem::file_time_type touched_ = std::filesystem::file_time_type::clock::now();
    LiveState live_{"run1"};
};

/// `"changed":[...]` of an event; "-" when there is none.
std::string ListIn(const std::string& event, const std::string& name)
{
    const std::size_t at = event.find("\"" + name + "\":[");
    return at == std::string::npos ? "-" : event.substr(at, event.find(']', at) + 1 - at);
}

TEST_F(LiveStates, NothingIsNewUntilSomethingChanges)
{
    Put("a.css", "1");
    Watch("a.css");
    EXPECT_EQ(live_.News(), "");
    EXPECT_EQ(live_.News(), "");
    EXPECT_EQ(live_.Version(), 1U);
}

TEST_F(LiveStates, AChangedFileIsToldOnceWhenItIsAtRest)
{
    Put("a.css", "1");
    Watch("a.css");
    Put("a.css", "12");
    EXPECT_EQ(live_.News(), "") << "it may be written still";
    EXPECT_EQ(ListIn(live_.News(), "changed"), "\"changed\":[\"/a.css\"]");
    EXPECT_EQ(live_.News(), "");
    EXPECT_EQ(live_.Version(), 2U);
}

TEST_F(LiveStates, ANewStampAloneIsNoChange)
{
    Put("a.css", "1");
    Watch("a.css");
    Touch("a.css");
    EXPECT_EQ(live_.News() + live_.News(), "");
    Touch("a.css");
    Watch("a.css"); // another browser is served
    EXPECT_EQ(live_.News() + live_.News(), "");
    EXPECT_EQ(live_.Version(), 1U);
    Put("a.css", "2");
    Touch("a.css");
    EXPECT_EQ(ListIn(live_.News() + live_.News(), "changed"), "\"changed\":[\"/a.css\"]");
}

TEST_F(LiveStates, WhatWasTooLongToBeReadIsToldByItsStamp)
{
    Put("film.mp4", "1");
    const std::string native = test::TextOf(folder_.Path() / "film.mp4");
    live_.Watch("/film.mp4", {native, NativeStamp(native)});
    Touch("film.mp4");
    EXPECT_EQ(ListIn(live_.News() + live_.News(), "changed"), "\"changed\":[\"/film.mp4\"]");
}

TEST_F(LiveStates, AListOfNamesFollowsItsFolder)
{
    Put("sub/a.gif", "1");
    const std::string native = test::TextOf(folder_.Path() / "sub");
    live_.Watch("/sub", {native, {}, MarkOfFolder(native), true});
    EXPECT_EQ(live_.News() + live_.News(), "");
    Put("sub/.hidden", "1");
    EXPECT_EQ(live_.News() + live_.News(), "");
    Put("sub/b.gif", "1");
    EXPECT_EQ(ListIn(live_.News() + live_.News(), "changed"), "\"changed\":[\"/sub\"]");
    std::filesystem::remove(folder_.Path() / "sub/a.gif");
    EXPECT_EQ(ListIn(live_.News() + live_.News(), "changed"), "\"changed\":[\"/sub\"]");
}

TEST_F(LiveStates, WhatGoesAndWhatComesAreChanges)
{
    Watch("a.htm");
    Put("a.htm", "1");
    live_.News();
    EXPECT_EQ(ListIn(live_.News(), "changed"), "\"changed\":[\"/a.htm\"]");
    std::filesystem::remove(folder_.Path() / "a.htm");
    live_.News();
    EXPECT_EQ(ListIn(live_.News(), "changed"), "\"changed\":[\"/a.htm\"]");
}

TEST_F(LiveStates, PagesAreToldOfWhenTheirBuildIsOver)
{
    Put("a.htm", "1");
    Put("b.htm", "1");
    Watch("a.htm");
    Watch("b.htm");
    live_.BuildBegins();
    Put("a.htm", "12");
    EXPECT_EQ(live_.News(), "");
    EXPECT_EQ(live_.News(), "");
    live_.BuildEnds(Made({"/a.htm", "/b.htm"}));
    EXPECT_EQ(
        live_.News(),
        "data: {\"run\":\"run1\",\"version\":2,\"changed\":[\"/a.htm\"],\"build\":{\"failed\":"
        "false,\"warnings\":0,\"text\":\"\",\"place\":\"\",\"hint\":\"\"},\"gone\":[],"
        "\"fresh\":[]}\n\n");
    EXPECT_EQ(live_.News(), "");
}

TEST_F(LiveStates, WhoHasAnOlderOneIsToldWhenAnotherGetsTheNew)
{
    Put("a.htm", "1");
    Watch("a.htm");
    Put("a.htm", "12");
    Watch("a.htm");
    EXPECT_EQ(live_.Version(), 2U) << "the new one is served as of this version";
    EXPECT_THAT(live_.News(), testing::HasSubstr("\"version\":2,\"changed\":[\"/a.htm\"]"));
    EXPECT_EQ(live_.News(), "");
}

TEST_F(LiveStates, WhoComesLaterIsToldWhatHappenedMeanwhile)
{
    Put("a.htm", "1");
    Watch("a.htm");
    Put("a.htm", "12");
    Build({});
    live_.News();
    EXPECT_EQ(ListIn(live_.Since(1), "changed"), "\"changed\":[\"/a.htm\"]");
    EXPECT_EQ(ListIn(live_.Since(2), "changed"), "\"changed\":[]");
}

TEST_F(LiveStates, ABuildTellsHowItWent)
{
    BuildNews news;
    news.warnings = 2;
    news.text = "\"odd\" <word>";
    news.place = "_html.txt:3";
    news.hint = "Mend it.";
    Build(news);
    EXPECT_THAT(live_.News(), testing::HasSubstr(
                                  "\"build\":{\"failed\":false,\"warnings\":2,\"text\":\"\\u0022odd"
                                  "\\u0022 \\u003cword>\",\"place\":\"_html.txt:3\",\"hint\":"
                                  "\"Mend it.\"}"));
    Build({});
    EXPECT_THAT(live_.News(), testing::HasSubstr("\"warnings\":0,\"text\":\"\""));
}

TEST_F(LiveStates, APageThatIsNoLongerMadeIsGoneUntilItIsMadeAgain)
{
    Build(Made({"/a.htm", "/b.htm"}));
    Build(Made({"/a.htm", "/c.htm", "/d.htm"}));
    const std::string event = live_.News();
    EXPECT_EQ(ListIn(event, "gone"), "\"gone\":[\"/b.htm\"]");
    EXPECT_EQ(ListIn(event, "fresh"), "\"fresh\":[\"/c.htm\",\"/d.htm\"]");
    Build(Made({"/a.htm", "/c.htm", "/d.htm"}));
    EXPECT_EQ(ListIn(live_.News(), "gone"), "\"gone\":[\"/b.htm\"]");
    Build(Made({"/a.htm", "/b.htm", "/c.htm", "/d.htm"}));
    EXPECT_EQ(ListIn(live_.News(), "gone"), "\"gone\":[]");
}

TEST_F(LiveStates, ABuildThatFailedDoesNotTellWhatIsGone)
{
    Build(Made({"/a.htm", "/b.htm"}));
    BuildNews failed = Made({"/a.htm"});
    failed.has_failed = true;
    Build(failed);
    EXPECT_EQ(ListIn(live_.News(), "gone"), "\"gone\":[]");
    Build(Made({"/a.htm"}));
    EXPECT_EQ(ListIn(live_.News(), "gone"), "\"gone\":[\"/b.htm\"]");
}

} // namespace
} // namespace kiv
