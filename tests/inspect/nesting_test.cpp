// How deep elements are nested, at most.
#include "inspect/nesting.h"
#include "tests/support/repeated.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv {

namespace {

TEST(NestingTest, OfPagesAsTheyAre)
{
    const std::pair<std::string, std::size_t> rows[] = {
        {"", 0},
        {"text < 5 & 3 > 2", 0},
        {"<p>a<p>b<p>c", 1},
        {Repeated(50, "<br><img src=a><hr>"), 0},
        {"<ul>" + Repeated(50, "<li>a") + "</ul>" + Repeated(3, "<b>"), 3},
        {"<table>" + Repeated(50, "<tr><td><p>a<td>b"), 4},
        {"<dl>" + Repeated(50, "<dt>a<dd>b") + "</dl>", 2},
        {Repeated(9, "<div title='</div>'>"), 9},
        {Repeated(9, "<div><!-- </div> -->"), 9},
        {Repeated(9, "<div><!--></div>"), 1},
        {Repeated(9, "<DIV></div >"), 1},
        {"<svg>" +
             Repeated(50, "<path d=\"M0 0\"/><g>"
                          "<use/></g><circle />") +
             "</svg>",
         2},
    };
    for (const auto& [html, deepest] : rows)
        EXPECT_EQ(NestingBound(html, 100), deepest) << html;
}

TEST(NestingTest, EndTagsOfWhatIsNotOpen)
{
    const std::string deep = Repeated(1000, "<li><dd>");
    EXPECT_EQ(NestingBound(deep + Repeated(100'000, "</x>"), 3000), 2000U);
    EXPECT_EQ(NestingBound("<x><div>" + deep + Repeated(100'000, "</x>"), 3000), 2002U);
    EXPECT_EQ(NestingBound("<x><ul><li>a<li>b</ul></x><div><div>", 100), 3U);
    EXPECT_EQ(NestingBound("<div><li><p></div>" + Repeated(4, "<b>"), 100), 4U);
}

TEST(NestingTest, WhatLooksClosedAndIsNot)
{
    // Each closes what another element shields.
    for (const std::string_view part :
         {"<div><marquee></div></marquee>", "<svg><td>", "<li><dd>", "<b><i></b>",
          "<svg><path d=x/>", "<path/>", "<svg><div></div></svg><svg><div/><path/>"})
        EXPECT_GE(NestingBound(Repeated(200, part), 100), 100U) << part;
    // What is no part of a drawing ends it, and what follows is closed no more.
    EXPECT_GE(NestingBound("<svg><div></div>" + Repeated(200, "<path/>"), 100), 100U);
    EXPECT_GE(NestingBound("<svg></p>" + Repeated(200, "<path/>"), 100), 100U);
}

} // namespace

} // namespace kiv
