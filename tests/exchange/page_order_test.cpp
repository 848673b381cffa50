// In which order the pages of a folder come.
#include "exchange/page_order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;

/// Pages with their bytes, in the order of their names.
using Bytes = std::vector<std::pair<std::string, std::string>>;

std::pair<OrderedBy, std::vector<std::string>> OrderOf(const Bytes& bytes)
{
    std::vector<FoundPage> pages;
    std::vector<PageHints> hints;
    for (const auto& [name, text] : bytes) {
        pages.push_back({name, text, {}});
        hints.push_back(HintsOf(text));
    }
    const PageOrder order = OrderPages(pages, hints);
    std::vector<std::string> names;
    for (const std::size_t page : order.pages)
        names.push_back(pages[page].name);
    return {order.by, names};
}

TEST(OldPageOrder, FollowsTheLinksToTheNextPage)
{
    const auto [by, names] = OrderOf({{"a.htm", "<link rel=\"next\" href=\"b.htm\">"},
                                      {"b.htm", ""},
                                      {"index.htm", "<a accesskey=n href='c.htm'>"},
                                      {"c.htm", "<a href=\"./a.htm#top\" rel=next>"}});
    EXPECT_EQ(by, OrderedBy::links_between);
    EXPECT_THAT(names, ElementsAre("index.htm", "c.htm", "a.htm", "b.htm"));
}

TEST(OldPageOrder, TakesALinkBackAsOneOnward)
{
    const auto [by, names] =
        OrderOf({{"a.htm", "<link rel=previous href=b.htm>"}, {"b.htm", "<p>first"}});
    EXPECT_EQ(by, OrderedBy::links_between);
    EXPECT_THAT(names, ElementsAre("b.htm", "a.htm"));
}

TEST(OldPageOrder, FollowsLinksThatAreCalledSo)
{
    const auto [by, names] =
        OrderOf({{"a.htm", "<a href='c.htm'><img src=\"n.gif\" alt=\"Next page\"></a>"},
                 {"b.htm", "<a href=a.htm><b>NEXT</b>: Oil &raquo;</a> <a href=index.htm>Back</a>"},
                 {"c.htm", "<a href=index.htm>Back</a> <A HREF=a.htm>[&lt;&nbsp;Previous]</A>"},
                 {"index.htm", "<a href=\"b.htm\">\n Forward &gt;&gt;</a>"}});
    EXPECT_EQ(by, OrderedBy::links_between);
    EXPECT_THAT(names, ElementsAre("index.htm", "b.htm", "a.htm", "c.htm"));
}

// The way up is called so, too, and so is what leads to the news from everywhere.
TEST(OldPageOrder, TakesNoLinkThatManyPagesHave)
{
    const auto [by, names] = OrderOf({{"a.htm", "<a href=z.htm>Back</a><a href=b.htm>Next</a>"},
                                      {"b.htm", "<a href=z.htm>Back</a><a href=b.htm>Next</a>"},
                                      {"c.htm", "<a href=z.htm>Back</a><a href=b.htm>Next</a>"},
                                      {"z.htm", "<a href=c.htm>Next steps</a>"}});
    EXPECT_EQ(by, OrderedBy::names);
    EXPECT_THAT(names, ElementsAre("a.htm", "b.htm", "c.htm", "z.htm"));
}

TEST(OldPageOrder, EndsWhereLinksGoRound)
{
    const auto [by, names] =
        OrderOf({{"a.htm", "<link rel=next href=b.htm>"}, {"b.htm", "<link rel=next href=a.htm>"}});
    EXPECT_THAT(names, ElementsAre("a.htm", "b.htm"));
}

TEST(OldPageOrder, GoesByTheIndexPageElse)
{
    const auto [by, names] =
        OrderOf({{"a.htm", ""},
                 {"b.htm", ""},
                 {"c.htm", ""},
                 {"Index.html", "<A HREF=\"http://x/a.htm\"><a href=\"C.htm\"><a href='b.htm'>"}});
    EXPECT_EQ(by, OrderedBy::index_page);
    EXPECT_THAT(names, ElementsAre("Index.html", "c.htm", "b.htm", "a.htm"));
}

TEST(OldPageOrder, GoesByNameElse)
{
    const auto [by, names] = OrderOf({{"a.htm", "<a href=b.htm>"}, {"b.htm", "<!-- <a rel=next "}});
    EXPECT_EQ(by, OrderedBy::names);
    EXPECT_THAT(names, ElementsAre("a.htm", "b.htm"));
}

TEST(LinkTarget, IsSeenFromTheSite)
{
    EXPECT_EQ(LinkTarget("b.html#x", "sub/a.html"), "sub/b.html");
    EXPECT_EQ(LinkTarget("../b%20c.html?q", "sub/a.html"), "b c.html");
    EXPECT_EQ(LinkTarget("../../b.html", "sub/a.html"), "");
    EXPECT_EQ(LinkTarget("#x", "a.html"), "");
    EXPECT_EQ(LinkTarget("http://x/b.html", "a.html"), "");
    EXPECT_EQ(LinkTarget("/b.html", "a.html"), "");
}

} // namespace
} // namespace kiv
