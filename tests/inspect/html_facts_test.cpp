// Pages that nobody would write, and what is kept of others.
#include "inspect/html_facts.h"
#include "tests/support/repeated.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

namespace {

PageFacts ReadPage(std::string_view bytes)
{
    ReadingTime time;
    return kiv::ReadPage(bytes, time);
}

class HtmlFactsTest : public testing::Test {
  protected:
    HtmlFactsTest()
    {
        if (!CanReadPages())
            skipped_ = true;
    }
    void SetUp() override
    {
        if (skipped_)
            GTEST_SKIP() << "there is no reader of HTML";
    }

  private:
    bool skipped_ = false;
};

TEST_F(HtmlFactsTest, TooDeepIsNotRead)
{
    for (const std::string_view part : {"<div>", "<b>", "<table>", "<svg>", "<marquee>", "<a b=1>"})
        EXPECT_FALSE(ReadPage(Repeated(20'000, part)).is_read) << part;
}

TEST_F(HtmlFactsTest, WhatTakesTooLongIsNotRead)
{
    const std::string large = Repeated(20'000, "<p>word</p>");
    ReadingTime none{.own = 0, .shared = 0};
    EXPECT_FALSE(kiv::ReadPage(large, none).is_read);
    EXPECT_TRUE(kiv::ReadPage("<p>word</p>", none).is_read);
    EXPECT_EQ(none.shared, 0);
    const std::clock_t hour = std::clock_t{3600} * CLOCKS_PER_SEC;
    ReadingTime shared{.own = 0, .shared = hour};
    EXPECT_TRUE(kiv::ReadPage(large, shared).is_read);
    EXPECT_LT(shared.shared, hour);
    ReadingTime own{.own = hour, .shared = 7};
    EXPECT_TRUE(kiv::ReadPage(large, own).is_read);
    EXPECT_EQ(own.shared, 7);
}

TEST_F(HtmlFactsTest, LargePagesAreRead)
{
    const PageFacts facts = ReadPage(Repeated(20'000, "<p>word <a href='p.htm'>x</a></p>\n"));
    EXPECT_TRUE(facts.is_read);
    ASSERT_EQ(facts.links.size(), 20'000U);
    EXPECT_EQ(facts.links.back().line, 20'000);
}

TEST_F(HtmlFactsTest, BrokenOffAnywhereItIsRead)
{
    const std::string page = "\xEF\xBB\xBF<!DOCTYPE html><!-- c --><p id='\xE9' style=\"a:url(b)\">"
                             "<a href=\"a&amp;b\0c\">x<% d %></a><style>@import 'e'</style>"
                             "<script>'f.gif'</script><img srcset=\"g 1x, h\"></p>&#x41;&amp";
    for (std::size_t size = 0; size <= page.size(); ++size)
        EXPECT_TRUE(ReadPage(page.substr(0, size)).is_read) << size;
}

TEST_F(HtmlFactsTest, EveryByteMayStandInAnAddress)
{
    for (int code = 1; code < 256; ++code) {
        const char c = static_cast<char>(code);
        if (c == '"' || c == '&' || c == '<')
            continue;
        const PageFacts facts = ReadPage(std::string("\n<a href=\"x") + c + "y\">z</a>");
        ASSERT_EQ(facts.links.size(), 1U) << code;
        EXPECT_EQ(facts.links[0].line, 2);
        EXPECT_EQ(facts.links[0].Words(), std::string("x") + c + "y") << code;
    }
}

TEST_F(HtmlFactsTest, LinesAreCountedByTheirLineFeeds)
{
    const PageFacts facts = ReadPage("a\r\nb\rc\n<p id=one><b>\n<p id=two>\r\n</b><p\nid=three>");
    ASSERT_EQ(facts.ids.size(), 3U);
    EXPECT_EQ(facts.ids[0].line, 3);
    EXPECT_EQ(facts.ids[1].line, 4);
    EXPECT_EQ(facts.ids[2].line, 6);
}

TEST_F(HtmlFactsTest, LinesOfAddressesInAStyleSheet)
{
    const PageFacts facts =
        ReadPage("a\n<style>p { a: url(a.gif) }\n\nb { a: url(b.gif), url(c.gif)\n"
                 "}</style><p style=\"a: url(d.gif);\nb: url(e.gif)\">");
    std::vector<std::pair<std::string, int>> found;
    for (const PageLink& link : facts.links)
        found.emplace_back(link.address, link.line);
    EXPECT_EQ(found, (std::vector<std::pair<std::string, int>>{
                         {"a.gif", 2}, {"b.gif", 4}, {"c.gif", 4}, {"d.gif", 5}, {"e.gif", 6}}));
}

TEST_F(HtmlFactsTest, ServerCodeIsNoText)
{
    const PageFacts facts =
        ReadPage("<% if a then\n x = \"<a href='gone.htm'>\"\n%>\n<a href=\"there.htm\">x</a>");
    EXPECT_TRUE(facts.is_made_by_server);
    ASSERT_EQ(facts.links.size(), 1U);
    EXPECT_EQ(facts.links[0].address, "there.htm");
    EXPECT_EQ(facts.links[0].line, 4);
    EXPECT_FALSE(ReadPage("<?xml version=\"1.0\"?><p>x</p>").is_made_by_server);
}

} // namespace

} // namespace kiv
