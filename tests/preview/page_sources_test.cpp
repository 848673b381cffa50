// Answers to what a page's script asks.
#include "platform/run_error.h"
#include "preview/page_sources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

class Sources : public testing::Test {
  protected:
    Sources()
    {
        page_.page = {"a.htm", "C:\\site\\a.htm"};
        page_.folder = "C:\\site\\";
        page_.lines = {{1, "<p>\xE9!", 0, 1}};
        PageStory story{{{"C:\\site\\_html.txt", 3, 3}}, "<p>\xE9@X", {}, 1, ""};
        story.steps.push_back({"@X", "filled", "<p>\xE9!", {}});
        page_.stories = {story};
    }

    SourceTools Tools()
    {
        return {.tell_page =
                    [this](const std::string& path) {
                        told_ += path + ";";
                        return page_;
                    },
                .drive_path = [](const std::string& native) { return "C:\\site" + native; },
                .edit =
                    [this](const std::string& path, int line) {
                        if (!refusal_.empty())
                            throw RunError(ErrorKind::file, refusal_, {}, "Choose one.");
                        edited_ = path + ":" + std::to_string(line);
                    }};
    }

    PageStories page_;
    std::string told_;
    std::string edited_;
    std::string refusal_;
    PageSources sources_{Tools()};
};

TEST_F(Sources, ThePlaceOfAnElement)
{
    EXPECT_EQ(sources_.Place({"\\A.htm", 1, 1}), "{\"trouble\":\"\",\"place\":\"_html.txt:3\"}");
}

TEST_F(Sources, WhatNoBuildMakesIsItsOwnSource)
{
    EXPECT_EQ(sources_.Place({"\\other.htm", 7, 1}),
              "{\"trouble\":\"\",\"place\":\"other.htm:7\"}");
    EXPECT_EQ(sources_.Place({"\\a.htm", 2, 1}), "{\"trouble\":\"\",\"place\":\"a.htm:2\"}");
}

TEST_F(Sources, APageIsToldOnceABuild)
{
    sources_.Place({"\\a.htm", 1, 1});
    sources_.Story({"\\a.htm", 1, 1});
    EXPECT_EQ(told_, "C:\\site\\a.htm;");
    sources_.Forget();
    sources_.Place({"\\a.htm", 1, 1});
    EXPECT_EQ(told_, "C:\\site\\a.htm;C:\\site\\a.htm;");
}

TEST_F(Sources, TheStoryHasWhatChanged)
{
    EXPECT_EQ(sources_.Story({"\\a.htm", 1, 1}),
              "{\"trouble\":\"\",\"title\":\"a.htm:1\",\"parts\":["
              "{\"title\":\"_html.txt:3\",\"words\":\"\",\"text\":\"\\u003cp>\xC3\xA9@X\","
              "\"begin\":0,\"size\":0},"
              "{\"title\":\"@X\",\"words\":\"filled\",\"text\":\"\\u003cp>\xC3\xA9!\","
              "\"begin\":4,\"size\":1},"
              "{\"title\":\"a.htm:1\",\"words\":\"\",\"text\":\"\\u003cp>\xC3\xA9!\","
              "\"begin\":0,\"size\":0}]}");
}

TEST_F(Sources, NoStoryOfWhatNoBuildMakes)
{
    EXPECT_THAT(sources_.Story({"\\other.htm", 1, 1}),
                testing::StartsWith("{\"trouble\":\"No page list of this site makes this line"));
}

TEST_F(Sources, TheEditorOpensThePlace)
{
    EXPECT_EQ(sources_.Open({"\\a.htm", 1, 1}), "{\"trouble\":\"\"}");
    EXPECT_EQ(edited_, "C:\\site\\_html.txt:3");
    sources_.Open("C:\\site\\_template.txt", 9);
    EXPECT_EQ(edited_, "C:\\site\\_template.txt:9");
}

TEST_F(Sources, WithoutAPlaceNoEditorIsStarted)
{
    EXPECT_EQ(sources_.Open("", 0),
              "{\"trouble\":\"The last build told of no place: there is none to open.\"}");
    EXPECT_EQ(edited_, "");
}

TEST_F(Sources, AnEditorThatDoesNotStartIsTold)
{
    refusal_ = "no such program";
    EXPECT_EQ(sources_.Open({"\\a.htm", 1, 1}),
              "{\"trouble\":\"The editor did not start: no such program. Choose one.\"}");
}

} // namespace
} // namespace kiv
