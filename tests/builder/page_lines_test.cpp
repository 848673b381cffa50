// A page's lines are seen where the page list has them, or kept by the page; nobody can tell which.
#include "builder/page_lines.h"

#include "platform/run_error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kiv {
namespace {

using Texts = std::vector<std::string>;

class PageLinesTest : public testing::Test {
  protected:
    /// The texts of entries 0 to `last`.
    static Texts TextsOf(const PageLineTable& table, int last)
    {
        Texts texts;
        for (int index = 0; index <= last; ++index)
            texts.emplace_back(table[index].text);
        return texts;
    }
    static Texts BehindOf(const PageLineTable& table, int index)
    {
        Texts texts;
        for (const SourceLine& line : table.Behind(index))
            texts.emplace_back(line.text);
        return texts;
    }
    /// The list's lines from `first` (0-based) on.
    std::span<const SourceLine> Row(std::size_t first, std::size_t count) const
    {
        return std::span(list).subspan(first, count);
    }
    void ExpectRefused(int index)
    {
        try {
            static_cast<void>(lines[index]);
            ADD_FAILURE() << index << " is there";
        } catch (const RunError& error) {
            EXPECT_EQ(error.kind, ErrorKind::subscript);
            EXPECT_EQ(error.text, "page line " + std::to_string(index) + " is outside 0 to 5000");
        }
    }

    std::vector<SourceLine> list = {{"a", {}, 1}, {"b", {}, 2}, {"c", {}, 3}, {"d", {}, 4}};
    PageLineTable lines;
};

TEST_F(PageLinesTest, WhatFollowsInTheListIsSeenThere)
{
    lines.See(1, Row(0, 1));
    lines.See(2, Row(1, 2));
    lines.Close(4);
    EXPECT_EQ(TextsOf(lines, 6), (Texts{"", "a", "b", "c", "@@ENDOFFILE@@", "", ""}));
    EXPECT_EQ(&lines[2], &list[1]);
    EXPECT_EQ(BehindOf(lines, 1), (Texts{"b", "c"}));
    EXPECT_EQ(BehindOf(lines, 3), Texts());
    EXPECT_EQ(BehindOf(lines, 5), Texts());
}

TEST_F(PageLinesTest, WhatWasTakenOverStaysWhenTheListChanges)
{
    lines.See(1, Row(0, 3));
    lines.Close(4);
    lines.TakeOver();
    list[1].text = "other";
    EXPECT_EQ(TextsOf(lines, 5), (Texts{"", "a", "b", "c", "@@ENDOFFILE@@", ""}));
    EXPECT_EQ(BehindOf(lines, 2), (Texts{"c", "@@ENDOFFILE@@"}));
}

TEST_F(PageLinesTest, AnotherPassLeavesWhatItDoesNotReach)
{
    lines.See(1, Row(0, 4));
    lines.Close(5);
    lines.TakeOver();
    list = {{"x", {}, 1}};
    lines.See(1, Row(0, 1));
    lines.Close(2);
    EXPECT_EQ(TextsOf(lines, 6), (Texts{"", "x", "@@ENDOFFILE@@", "c", "d", "@@ENDOFFILE@@", ""}));
    EXPECT_EQ(BehindOf(lines, 2), (Texts{"c", "d", "@@ENDOFFILE@@"}));
}

TEST_F(PageLinesTest, ALineThatDoesNotFollowInTheListIsKept)
{
    lines.See(1, Row(0, 1));
    lines.See(2, Row(2, 1));
    lines.Set(3, {"own", {}, 7});
    lines.See(4, Row(3, 1));
    lines.Close(5);
    EXPECT_EQ(TextsOf(lines, 6), (Texts{"", "a", "c", "own", "d", "@@ENDOFFILE@@", ""}));
}

TEST_F(PageLinesTest, AGapIsEmpty)
{
    lines.See(3, Row(0, 1));
    EXPECT_EQ(TextsOf(lines, 4), (Texts{"", "", "", "a", ""}));
    PageLineTable closed;
    closed.See(1, Row(0, 1));
    closed.Close(3);
    EXPECT_EQ(TextsOf(closed, 4), (Texts{"", "a", "", "@@ENDOFFILE@@", ""}));
}

TEST_F(PageLinesTest, ATableWithoutALineMayBeClosed)
{
    lines.Close(1);
    EXPECT_EQ(TextsOf(lines, 2), (Texts{"", "@@ENDOFFILE@@", ""}));
    lines.TakeOver();
    EXPECT_EQ(TextsOf(lines, 2), (Texts{"", "@@ENDOFFILE@@", ""}));
}

TEST_F(PageLinesTest, ItsBoundsAreThoseOfTheFormat)
{
    const std::vector<SourceLine> many(5000, {"x", {}, 1});
    for (const std::size_t count : {std::size_t{3}, many.size()}) {
        lines = {};
        lines.See(1, std::span(many).first(count));
        ExpectRefused(-1);
        ExpectRefused(5001);
        EXPECT_EQ(lines[5000].text, count < many.size() ? "" : "x");
    }
    EXPECT_THROW(lines.Close(5001), RunError);
    EXPECT_THROW(lines.See(5001, Row(0, 1)), RunError);
    EXPECT_EQ(lines[5000].text, "x");
}

} // namespace
} // namespace kiv
