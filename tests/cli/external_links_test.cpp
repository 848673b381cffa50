// "check --external": addresses on other hosts.
#include "inspect/html_facts.h"
#include "tests/cli/cli_desk.h"

namespace kiv {

namespace {

class ExternalLinksTest : public CliTest {
  protected:
    ExternalLinksTest()
    {
        Put("site/_template.txt", "<a href=\"http://www.example.com/\">home</a>\n"
                                  "<!--BODY HERE-->\n");
        Put("site/_html.txt", "@FILE = index\n"
                              "@TITLE = Start\n"
                              "<a href=\"two.htm\">two</a> <img src=\"//pics.example.com/a.gif\">\n"
                              "<a href=\"mailto:desk@example.com\">mail</a>\n"
                              "@FILE = two\n"
                              "@TITLE = Two\n"
                              "<a href=\"javascript:go()\">go</a>\n");
    }
    void SetUp() override
    {
        if (!CanReadPages())
            GTEST_SKIP() << "no page is read";
    }
};

TEST_F(ExternalLinksTest, TheReportHasEachWithItsFirstPage)
{
    const Json external = Report({"check", "C:\\site", "--external"})["external"];
    ASSERT_EQ(external.Items().size(), 2U);
    const Json picture = external[0];
    EXPECT_EQ(picture["address"].Text(), "//pics.example.com/a.gif");
    EXPECT_EQ(picture["file"].Text(), "C:\\site\\_html.txt");
    EXPECT_EQ(picture["native"].Text(), Native("site/_html.txt").make_preferred().string());
    EXPECT_EQ(picture["line"].Dump(), "3");
    EXPECT_EQ(picture["page"].Text(), "index.htm");
    const Json home = external[1];
    EXPECT_EQ(home["address"].Text(), "http://www.example.com/");
    EXPECT_EQ(home["file"].Text(), "C:\\site\\_template.txt");
    EXPECT_EQ(home["line"].Dump(), "1");
    EXPECT_EQ(home["page"].Text(), "index.htm");
}

TEST_F(ExternalLinksTest, PlainTheyStandBehindTheFindings)
{
    const Printed printed = Call({"check", "C:\\site", "--external"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_THAT(printed.out, testing::HasSubstr("_html.txt:3: //pics.example.com/a.gif (page "
                                                "index.htm)\n"));
    EXPECT_TRUE(printed.out.ends_with("2 addresses on other hosts\nCheck: nothing found\n"))
        << printed.out;
}

TEST_F(ExternalLinksTest, WithoutTheOptionNothingIsSaidOfThem)
{
    EXPECT_THAT(Report({"check", "C:\\site"}).Keys(), testing::Not(testing::Contains("external")));
    EXPECT_EQ(Call({"check", "C:\\site"}).out, "Check: nothing found\n");
}

} // namespace

} // namespace kiv
