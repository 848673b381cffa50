// Sites that fill the format's largest tables, and sites of one line more.
#include "cli_desk.h"

namespace kiv {
namespace {

constexpr int kListedPages = 10;
constexpr int kLinesOfAPage = 4000;

class LargestSites : public CliTest {
  protected:
    void SetUp() override { Put("site/_template.txt", ";\n"); }

    /// Ten pages of 4000 lines, the name and the title among them, then further lines.
    static std::string PageList(const std::string& further)
    {
        std::string list;
        for (int page = 1; page <= kListedPages; ++page) {
            list += "@FILE = p" + std::to_string(page) + "\n@TITLE = T\n";
            for (int line = 3; line <= kLinesOfAPage; ++line)
                list += "x\n";
        }
        return list + further;
    }

    static std::string Lines(int count)
    {
        std::string lines;
        for (int line = 0; line < count; ++line)
            lines += "x\r\n";
        return lines;
    }
};

TEST_F(LargestSites, FortyThousandSourceLines)
{
    Put("site/_html.txt", PageList(""));
    const Json report = Report({"build", "C:\\site"});
    EXPECT_EQ(report["status"], "10 files written");
    EXPECT_EQ(Content("site/p1.htm"), Lines(kLinesOfAPage - 2));
    EXPECT_EQ(Content("site/p10.htm"), Lines(kLinesOfAPage - 2));
}

TEST_F(LargestSites, ACommentIsNoSourceLine)
{
    Put("site/_html.txt", PageList(";\n"));
    EXPECT_EQ(KindOf(Report({"build", "C:\\site"})), "");
}

TEST_F(LargestSites, OneSourceLineMore)
{
    Put("site/_html.txt", PageList("y\n"));
    const Json report = Report({"build", "C:\\site"});
    EXPECT_EQ(KindOf(report), "subscript");
    EXPECT_THAT(report["error"].Dump(), testing::HasSubstr("40001"));
    EXPECT_FALSE(Exists("site/p1.htm")); // the whole list is read before a page is written
}

TEST_F(LargestSites, AnIncludedLineCounts)
{
    Put("site/more.txt", "y\n");
    Put("site/_html.txt", PageList("++more.txt\n"));
    EXPECT_EQ(KindOf(Report({"build", "C:\\site"})), "subscript");
    Put("site/more.txt", "");
    EXPECT_EQ(KindOf(Report({"build", "C:\\site"})), "");
}

TEST_F(LargestSites, ABlockIsOneSourceLineHoweverLongItIs)
{
    std::string list = PageList("");
    list.resize(list.size() - 2); // the last "x"
    list += "<zutimeline1>\n";
    for (int event = 0; event < 50000; ++event)
        list += "a|b\n";
    Put("site/_html.txt", list + "</zutimeline1>\n");
    EXPECT_EQ(KindOf(Report({"build", "C:\\site"})), "");
}

TEST_F(LargestSites, TheBlockOfALineTooManyIsExpandedBeforeTheLineIsStored)
{
    Put("site/_html.txt", PageList("<zufoo>\n"));
    const Json report = Report({"build", "C:\\site"});
    EXPECT_EQ(KindOf(report), "subscript");
    EXPECT_EQ(report["messages"], Json::Parse(R"(["<zufoo> is unknown!"])"));
    Put("site/_html.txt", PageList("<zutable>\n"));
    EXPECT_EQ(KindOf(Report({"build", "C:\\site"})), "end-of-file");
}

TEST_F(LargestSites, AThousandPagesAndOneMore)
{
    const auto list = [](int pages) {
        std::string text;
        for (int page = 1; page <= pages; ++page)
            text += "@FILE = p" + std::to_string(page) + "\n@TITLE = t\n";
        return text;
    };
    // Page 1001 has no record of its own; with 1000 pages the closing record has none.
    for (const auto& [pages, place] :
         {std::pair(1000, "line 2000"), std::pair(1001, "line 2001")}) {
        Put("site/_html.txt", list(pages));
        const Json report = Report({"build", "C:\\site"});
        EXPECT_EQ(KindOf(report), "subscript") << pages;
        EXPECT_THAT(report["error"]["where"].Text(), testing::HasSubstr(place));
        EXPECT_FALSE(Exists("site/p1.htm"));
    }
}

} // namespace
} // namespace kiv
