// The end of a watch, as a call sees it; tests/preview has the rest.
#include "cli_desk.h"
#include "platform/stop_request.h"

#include <algorithm>

namespace kiv {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

class WatchCalls : public CliTest {
  protected:
    WatchCalls()
    {
        stop = &stop_;
        Put("site/_template.txt", ";\n");
        Put("site/_html.txt", "@FILE = a\n@TITLE = A\na\n@FILE = b\n@TITLE = B\nb\n");
    }

    StopRequest stop_;
};

TEST_F(WatchCalls, ABuildThatIsStoppedIsAFailureForScripts)
{
    stop_.Ask();
    const Printed printed = Call({"watch", "C:\\site"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_THAT(printed.out, ContainsRegex("  stopped, 1 of 1 file changed\n$"));
    EXPECT_EQ(printed.err, "kiv: watching " + NativeOf("site") + "\n");
    EXPECT_EQ(Content("site/a.htm"), "a\r\n");
    EXPECT_FALSE(Exists("site/b.htm"));
    EXPECT_FALSE(Exists("site/_toc.txt"));
}

TEST_F(WatchCalls, TheReportSaysThatABuildWasStopped)
{
    stop_.Ask();
    const Printed printed = Call({"watch", "C:\\site", "--json"});
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(std::count(printed.out.begin(), printed.out.end(), '\n'), 1);
    const Json report = Json::Parse(printed.out);
    EXPECT_EQ(report["stopped"].Dump(), "true");
    EXPECT_TRUE(report["error"].IsNull());
    EXPECT_EQ(report["written"].Size(), 1U);
}

TEST_F(WatchCalls, AFolderThatIsNotThereIsAnErrorOnALine)
{
    const Printed printed = Call({"watch", "C:\\sote", "--json"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(std::count(printed.out.begin(), printed.out.end(), '\n'), 1);
    EXPECT_THAT(Json::Parse(printed.out)["error"]["text"].Text(),
                HasSubstr("cannot change to C:\\sote: no such folder"));
}

TEST_F(WatchCalls, OnATerminalItSaysHowToEndItToo)
{
    stop_.Ask();
    err_is_terminal = true;
    EXPECT_EQ(Call({"watch", "C:\\site"}).err,
              "kiv: watching " + NativeOf("site") + "; Ctrl+C ends it\n");
}

TEST_F(WatchCalls, OtherCommandsAreNotStopped)
{
    stop_.Ask();
    EXPECT_EQ(Call({"build", "C:\\site"}).code, 0);
    EXPECT_TRUE(Exists("site/b.htm"));
}

} // namespace
} // namespace kiv
