#include "tests/support/json.h"
#include "watch_process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace kiv {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using test::Becomes;
using test::CliProcess;
using test::Ending;
using test::HasPattern;
using testing::HasSubstr;

class WatchProcess : public testing::Test, public test::DriveFolder {
  protected:
    WatchProcess()
    {
        Put("site/_template.txt", ";\n");
        PutPages(1, "text");
    }

    void PutPages(int count, const std::string& text) const
    {
        std::string list;
        for (int page = 1; page <= count; ++page)
            list += "@FILE = p" + std::to_string(page) + "\n@TITLE = T\n" + text + "\n";
        Put("site/_html.txt", list);
    }

    std::string Page(int number) const
    {
        return Content("site/p" + std::to_string(number) + ".htm");
    }
};

TEST_F(WatchProcess, EachBuildIsALine)
{
    CliProcess watch(*this, {"--now", "2004-03-05T14:07:09", "watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    EXPECT_THAT(watch.Out(), HasPattern("^14:07:09  [0-9.]+ m?s  3 of 3 files changed\n$"));
    PutPages(2, "text");
    ASSERT_TRUE(watch.HasLines(2));
    EXPECT_THAT(watch.Out(), HasPattern("\n14:07:09  [0-9.]+ m?s  3 of 4 files changed\n$"));
    EXPECT_EQ(watch.Err(), "kiv: watching " + Native("site").string() + "\n");
    EXPECT_THAT(watch.End(Ending::interrupted), test::IsAsked(0));
}

TEST_F(WatchProcess, WarningsAndErrorsAreToldAsABuildTellsThem)
{
    PutPages(1, "!!9[none]");
    CliProcess watch(*this, {"watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    const std::string list = Native("site/_html.txt").make_preferred().string();
    PutPages(1, "!++none.txt");
    ASSERT_TRUE(watch.HasLines(2));
    EXPECT_THAT(watch.Out(), HasPattern("  failed\n$"));
    EXPECT_THAT(watch.Err(), HasSubstr(list + ":3: error: cannot read C:\\site\\none.txt: "));
    PutPages(1, "mended");
    ASSERT_TRUE(watch.HasLines(3));
    EXPECT_EQ(Page(1), "mended\r\n");
    EXPECT_THAT(watch.End(Ending::terminated), test::IsAsked(0));
}

TEST_F(WatchProcess, WithJsonEachBuildIsAnObjectOnALine)
{
    CliProcess watch(*this, {"--json", "watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    PutPages(1, "!++none.txt");
    ASSERT_TRUE(watch.HasLines(2));
    EXPECT_THAT(watch.End(Ending::interrupted), test::IsAsked(0));
    std::istringstream out(watch.Out());
    std::string line;
    std::getline(out, line);
    const test::Json first = test::Json::Parse(line);
    EXPECT_TRUE(first["error"].IsNull());
    EXPECT_EQ(first["status"], "1 files written");
    EXPECT_EQ(first["written"][0]["path"], "C:\\site\\p1.htm");
    std::getline(out, line);
    EXPECT_EQ(test::Json::Parse(line)["error"]["kind"], "file");
    EXPECT_FALSE(std::getline(out, line));
}

TEST_F(WatchProcess, AGroupIsOneLineAndHasItsMembersInTheReport)
{
    Put("site/_group.txt", "news\n");
    Put("site/news/_template.txt", ";\n");
    Put("site/news/_html.txt", "@FILE = item\n@TITLE = T\ntext\n");
    CliProcess watch(*this, {"--json", "watch", "C:\\site", "--group"});
    ASSERT_TRUE(watch.HasLines(1));
    EXPECT_THAT(watch.End(Ending::interrupted), test::IsAsked(0));
    const test::Json report = test::Json::Parse(watch.Out());
    EXPECT_EQ(report["members"].Size(), 2U);
    EXPECT_TRUE(Exists("site/news/item.htm"));
}

TEST_F(WatchProcess, AFolderThatIsNotThereAtFirstIsAnError)
{
    CliProcess watch(*this, {"watch", "C:\\sote"});
    ASSERT_TRUE(Becomes([&] { return watch.Err().ends_with('\n'); }));
    EXPECT_THAT(watch.Err(), HasSubstr("error: cannot change to C:\\sote: no such folder"));
    EXPECT_EQ(watch.End(Ending::own), 1);
}

TEST_F(WatchProcess, AFolderThatGoesIsToldOnce)
{
    CliProcess watch(*this, {"watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    fs::rename(Native("site"), Native("away"));
    ASSERT_TRUE(watch.HasLines(2));
    std::this_thread::sleep_for(milliseconds(700));
    EXPECT_EQ(watch.Lines(), 2U);
    fs::rename(Native("away"), Native("site"));
    ASSERT_TRUE(watch.HasLines(3));
    EXPECT_THAT(watch.End(Ending::interrupted), test::IsAsked(0));
}

TEST_F(WatchProcess, ABuildThatIsInterruptedEndsBetweenTwoPages)
{
    constexpr int kPages = 900;
    const std::string long_text(3000, 'a');
    PutPages(kPages, "old" + long_text);
    CliProcess watch(*this, {"watch", "C:\\site"});
    ASSERT_TRUE(watch.HasLines(1));
    PutPages(kPages, "new" + long_text);
    ASSERT_TRUE(Becomes([&] { return Page(1).starts_with("new"); }));
    const int code = watch.End(Ending::interrupted);
    if (code == CliProcess::kCannotAsk)
        GTEST_SKIP() << "nobody can interrupt it here";
    EXPECT_EQ(code, 1);
    EXPECT_THAT(watch.Out(), HasPattern("  stopped, [0-9]+ of [0-9]+ files? changed\n$"));
    int count = 0;
    for (int page = 1; page <= kPages; ++page) {
        const std::string bytes = Page(page);
        ASSERT_EQ(bytes.substr(3), long_text + "\r\n");
        count += bytes.starts_with("new") ? 1 : 0;
    }
    EXPECT_GT(count, 0);
    EXPECT_LT(count, kPages);
}

} // namespace
} // namespace kiv
