// The site of a window: building on save, and its server, step by step and without a window.
#include "preview/live_site.h"

#include "odd_drives.h"
#include "platform/drives.h"
#include "platform/run_error.h"
#include "raw_client.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "tests/shell/shell_desk.h"
#include "text/text.h"

#include <condition_variable>
#include <thread>

namespace kiv {
namespace {

using test::BodyOf;
using test::Get;
using testing::HasSubstr;

class LiveSites : public ShellTest {
  protected:
    LiveSites()
    {
        Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        PutText("one");
        workspace.StartWindow("C:\\site");
        site.Follow();
    }

    void PutText(const std::string& text)
    {
        Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n" + text + "\r\n");
    }
    /// A command of the window, and what comes after each.
    std::optional<RunError> Run(const std::function<void()>& command)
    {
        std::optional<RunError> error = workspace.Run(command);
        site.Follow();
        return error;
    }
    /// Asks until a build is due; false after five seconds.
    bool Waits()
    {
        for (int i = 0; i < 50; ++i) {
            if (site.IsBuildDue())
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        return false;
    }
    int Port()
    {
        const std::string address = site.AddressOf("C:\\site\\a.htm");
        return NumericHead(address.substr(std::string("http://127.0.0.1:").size()));
    }

    LiveSite site{*files, workspace, [this] {
                      const std::scoped_lock lock(mutex_);
                      is_woken_ = true;
                      woken_.notify_one();
                  }};
    std::mutex mutex_;
    std::condition_variable woken_;
    bool is_woken_ = false;
};

TEST_F(LiveSites, NothingIsBuiltWhileTheSwitchIsOff)
{
    EXPECT_FALSE(site.IsActive());
    EXPECT_FALSE(site.IsBuildDue());
    Run([&] { site.Build(BuildWorkDir); });
    PutText("two");
    EXPECT_FALSE(site.IsBuildDue());
}

TEST_F(LiveSites, TheSwitchBuildsAtOnceAndThenAfterEachSave)
{
    Run([&] { workspace.BuildsOnSave = true; });
    EXPECT_TRUE(site.IsActive());
    EXPECT_TRUE(site.IsBuildDue());
    Run([&] { site.BuildAgain(); });
    EXPECT_EQ(Content("site/a.htm"), "<!--BODY HERE-->\r\none\r\n");
    EXPECT_FALSE(site.IsBuildDue());
    PutText("two");
    EXPECT_TRUE(Waits());
    Run([&] { site.BuildAgain(); });
    EXPECT_EQ(Content("site/a.htm"), "<!--BODY HERE-->\r\ntwo\r\n");
    EXPECT_FALSE(site.IsBuildDue());
    Run([&] { workspace.BuildsOnSave = false; });
    PutText("three");
    EXPECT_FALSE(site.IsBuildDue());
    Run([&] { workspace.BuildsOnSave = true; });
    EXPECT_TRUE(site.IsBuildDue()); // what was saved meanwhile is not waited for
}

TEST_F(LiveSites, ASaveThatMendsAnErrorIsBuilt)
{
    PutText("<zutable>");
    Run([&] { workspace.BuildsOnSave = true; });
    EXPECT_TRUE(Run([&] { site.BuildAgain(); }));
    EXPECT_FALSE(site.IsBuildDue());
    PutText("well");
    EXPECT_TRUE(Waits());
    EXPECT_FALSE(Run([&] { site.BuildAgain(); }));
    EXPECT_EQ(Content("site/a.htm"), "<!--BODY HERE-->\r\nwell\r\n");
}

TEST_F(LiveSites, TheBuildOfLastTimeIsDoneAgain)
{
    Put("site/_group.txt", "sub\r\n");
    Put("site/sub/_template.txt", "<!--BODY HERE-->\r\n");
    Put("site/sub/_html.txt", "@FILE = s\r\n@TITLE = S\r\nold\r\n");
    Run([&] { workspace.BuildsOnSave = true; });
    Run([&] { site.Build(BuildGroup); });
    Put("site/sub/_html.txt", "@FILE = s\r\n@TITLE = S\r\nnew\r\n");
    EXPECT_TRUE(Waits());
    Run([&] { site.BuildAgain(); });
    EXPECT_EQ(Content("site/sub/s.htm"), "<!--BODY HERE-->\r\nnew\r\n");
    EXPECT_TRUE(workspace.BuildsOnSave); // a group build comes back to its folder
}

TEST_F(LiveSites, AnotherFolderEndsAll)
{
    Run([&] { site.BuildAndShow(); });
    EXPECT_TRUE(site.IsShown());
    EXPECT_TRUE(workspace.BuildsOnSave);
    const int port = Port();
    std::filesystem::create_directories(Native("other"));
    Run([&] { workspace.switchto("C:\\other"); });
    EXPECT_FALSE(site.IsShown());
    EXPECT_FALSE(workspace.BuildsOnSave);
    EXPECT_FALSE(site.IsActive());
    EXPECT_EQ(site.AddressOf("C:\\site\\a.htm"), "");
    EXPECT_ANY_THROW(test::RawClient client(port)); // nobody listens there any more
}

TEST_F(LiveSites, ThePagesAreServedAsTheyAreNow)
{
    Run([&] { site.BuildAndShow(); });
    EXPECT_THAT(reporter.status, HasSubstr("Preview: http://127.0.0.1:"));
    EXPECT_THAT(BodyOf(Get(Port(), "/a.htm")), HasSubstr("one"));
    EXPECT_EQ(site.AddressOf(""), site.AddressOf("C:\\site\\a.htm"));
    PutText("two");
    Run([&] { site.BuildAgain(); });
    EXPECT_THAT(BodyOf(Get(Port(), "/a.htm")), HasSubstr("two"));
    Run([&] { site.OpenBrowser("C:\\site\\a.htm"); });
    EXPECT_THAT(programs.started.back(), HasSubstr(site.AddressOf("")));
    site.Stop();
    EXPECT_FALSE(site.IsShown());
}

TEST_F(LiveSites, AFolderMayBeSpelledInAnyWay)
{
    Run([&] { workspace.switchto("/SITE/../site"); });
    Run([&] { site.BuildAndShow(); });
    EXPECT_THAT(site.AddressOf(""), testing::EndsWith("/a.htm"));
    EXPECT_EQ(site.AddressOf(""), site.AddressOf("C:\\site\\a.htm"));
    EXPECT_THAT(BodyOf(Get(Port(), "/a.htm")), HasSubstr("one"));
}

TEST_F(LiveSites, ASiteThatCannotBeBuiltIsShownAllTheSame)
{
    Put("site/a.htm", "former\r\n");
    PutText("<zutable>");
    const std::optional<RunError> error = Run([&] { site.BuildAndShow(); });
    ASSERT_TRUE(error);
    EXPECT_TRUE(site.IsShown());
    EXPECT_THAT(BodyOf(Get(Port(), "/a.htm")), HasSubstr("former"));
}

TEST_F(LiveSites, TheRootIsChosenAgainAfterTheFirstBuildThatEndsWell)
{
    Put("main.css", "p{}");
    PutText("<zutable>\r\n{{never");
    ASSERT_TRUE(Run([&] { site.BuildAndShow(); }));
    EXPECT_THAT(site.AddressOf(""), testing::EndsWith(Decimal(Port()) + "/"));
    const int port = Port();
    PutText("<link rel=stylesheet href=../main.css>");
    ASSERT_FALSE(Run([&] { site.BuildAgain(); }));
    EXPECT_EQ(Port(), port);
    EXPECT_THAT(site.AddressOf(""), testing::EndsWith(Decimal(port) + "/site/a.htm"));
    EXPECT_THAT(reporter.status, HasSubstr("/site/ (root "));
    EXPECT_EQ(BodyOf(Get(port, "/main.css")), "p{}");
    PutText("plain");
    ASSERT_FALSE(Run([&] { site.BuildAgain(); }));
    EXPECT_THAT(site.AddressOf(""), testing::EndsWith("/site/a.htm")); // it is settled
}

/// A site on a drive that may be away for a while.
class LiveSiteAway : public ShellTest {
  protected:
    LiveSiteAway()
    {
        drives.Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        drives.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\none\r\n");
        away.StartWindow("C:\\site");
        site.Follow();
    }

    test::OddDrives drives;
    HeaderPictureLoader loader{drives};
    Machine its_machine{drives, drives, clock, clipboard, programs, reporter, loader};
    Workspace away{its_machine};
    LiveSite site{drives, away, [] {}};
};

TEST_F(LiveSiteAway, IsToldOnceAndWhenItIsBack)
{
    away.BuildsOnSave = true;
    ASSERT_FALSE(away.Run([&] { site.BuildAgain(); }));
    drives.refused = {"C:\\site\\_html.txt"};
    EXPECT_FALSE(site.IsBuildDue());
    EXPECT_THAT(reporter.status, testing::StartsWith("cannot look at C:\\site\\_html.txt: "));
    const std::size_t told = reporter.statuses.size();
    EXPECT_FALSE(site.IsBuildDue());
    EXPECT_EQ(reporter.statuses.size(), told);
    drives.refused.clear();
    EXPECT_FALSE(site.IsBuildDue());
    EXPECT_EQ(reporter.status, "the sources can be read again");
    EXPECT_EQ(reporter.statuses.size(), told + 1);
}

// Whatever the server's thread wants of the drives is done in that of the window.
TEST_F(LiveSites, WhatABrowserAsksIsAnsweredByRunTasks)
{
    Put("utils/kiv_editpad.txt", "pad +%l %f\r\n");
    Run([&] { site.BuildAndShow(); });
    const std::string page = Get(Port(), "/a.htm");
    const std::string mark = "data-secret=\"";
    const std::string secret = page.substr(page.find(mark) + mark.size(), 32);
    const std::string host = "127.0.0.1:" + Decimal(Port());
    test::RawClient client(Port());
    client.Say("POST /.kiv/open HTTP/1.1\r\nHost: " + host + "\r\nOrigin: http://" + host +
               "\r\nX-Kiv-Secret: " + secret + "\r\nContent-Length: 18\r\n\r\npage=/a.htm&at=2:1");
    {
        std::unique_lock lock(mutex_);
        ASSERT_TRUE(woken_.wait_for(lock, std::chrono::seconds(20), [&] { return is_woken_; }));
    }
    EXPECT_EQ(programs.started.size(), std::size_t{0});
    site.RunTasks();
    EXPECT_EQ(BodyOf(client.Hear()), "{\"trouble\":\"\"}");
    EXPECT_EQ(programs.started, Texts{"pad +3 C:\\site\\_html.txt"});
}

} // namespace
} // namespace kiv
