#include "preview/watch_loop.h"

#include "platform/drives.h"
#include "platform/stop_request.h"
#include "shell/builds.h"
#include "shell/workspace.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kiv {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A reporter that asks for the end after a page.
class AskingReporter : public test::RecordingReporter {
  public:
    StopRequest* asked = nullptr;
    int after = 0;

  protected:
    void ShowStep(int done, int all) override
    {
        RecordingReporter::ShowStep(done, all);
        if (asked != nullptr && done == after)
            asked->Ask();
    }
};

/// After each build the next of its steps is done, after the last one the loop is stopped.
class StepFace : public WatchFace {
  public:
    explicit StepFace(StopRequest& stop) : stop_(stop) {}

    Reporter& Begin() override { return reporter.emplace(); }
    void Build(Workspace& workspace) override
    {
        if (before_build)
            before_build();
        if (is_group)
            BuildGroup(workspace);
        else
            BuildWorkDir(workspace);
    }
    void Built(const BuildRecord& record) override
    {
        records.push_back(record);
        warnings.push_back(reporter->Warnings().size());
        if (records.size() <= steps.size())
            steps[records.size() - 1]();
        else
            stop_.Ask();
    }
    void Refused(const RunError& error) override { refused.push_back(error.text); }
    void IsBack() override { refused.emplace_back("back"); }

    bool is_group = false;
    std::function<void()> before_build;
    std::vector<std::function<void()>> steps;
    std::vector<BuildRecord> records;
    std::vector<std::size_t> warnings;
    std::vector<std::string> refused;
    std::optional<AskingReporter> reporter;

  private:
    StopRequest& stop_;
};

class WatchLoopTest : public testing::Test, public test::DriveFolder {
  protected:
    WatchLoopTest()
    {
        Put("site/_template.txt", ";\n");
        Put("site/_html.txt", PageList({"index"}));
    }

    static std::string PageList(const std::vector<std::string>& names,
                                const std::string& text = "text")
    {
        std::string list;
        for (const std::string& name : names)
            list += "@FILE = " + name + "\n@TITLE = T\n" + text + "\n";
        return list;
    }

    /// Runs the loop until all is done; a build that never comes ends it, too.
    bool Run()
    {
        std::atomic<bool> is_over = false;
        std::thread guard([&] {
            for (int i = 0; i < 2000 && !is_over; ++i)
                std::this_thread::sleep_for(milliseconds(10));
            stop.Ask();
        });
        const bool is_whole = loop.Run();
        is_over = true;
        guard.join();
        return is_whole;
    }

    /// Gives a build that must not come the time to come.
    void StopLater()
    {
        stopping_ = std::thread([&] {
            std::this_thread::sleep_for(milliseconds(600));
            stop.Ask();
        });
    }

    void TearDown() override
    {
        if (stopping_.joinable())
            stopping_.join();
    }

    /// The sources whose change led to build `index`, from 0.
    std::vector<std::string> SourcesOf(std::size_t index) { return face.records.at(index).sources; }

    StopRequest stop;
    const std::unique_ptr<Drives> files = MakeDriveFiles({{'C', Root().string()}});
    FrozenClock clock{{2004, 3, 5, 14, 7, 9}};
    HeldClipboard clipboard;
    test::StartRecorder programs;
    test::RecordingReporter unused;
    HeaderPictureLoader pictures{*files};
    Machine machine{*files, *files, clock, clipboard, programs, unused, pictures};
    StepFace face{stop};
    WatchLoop loop{*files, machine, {"C:\\site", {}}, face, stop};

  private:
    std::thread stopping_;
};

TEST_F(WatchLoopTest, ASaveIsBuiltAndTold)
{
    face.steps = {[&] { Put("site/_html.txt", PageList({"index", "visit"})); }};
    EXPECT_TRUE(Run());
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_THAT(SourcesOf(0), IsEmpty());
    EXPECT_THAT(SourcesOf(1), ElementsAre("C:\\site\\_html.txt"));
    EXPECT_EQ(face.records[1].time, clock.Now());
    const std::vector<WrittenFile>& written = face.records[1].written;
    ASSERT_GE(written.size(), 2U);
    EXPECT_EQ(written[0].path, "C:\\site\\index.htm");
    EXPECT_FALSE(written[0].changed);
    EXPECT_EQ(written[1].path, "C:\\site\\visit.htm");
    EXPECT_TRUE(written[1].changed);
    EXPECT_TRUE(Exists("site/visit.htm"));
}

TEST_F(WatchLoopTest, WhateverIsTakenInIsWatched)
{
    Put("site/_html.txt", "++a.txt\n" + PageList({"index"}, "!++c.txt"));
    Put("site/_template.txt", "+b.txt\n<!--BODY HERE-->\n");
    Put("site/a.txt", ";a\n");
    Put("site/b.txt", "b\n");
    Put("site/c.txt", "c\n");
    face.steps = {
        [&] { Put("site/a.txt", ";other\n"); },
        [&] { Put("site/b.txt", "another b\n"); },
        [&] { Put("site/c.txt", "another c\n"); },
    };
    Run();
    ASSERT_EQ(face.records.size(), 4U);
    EXPECT_THAT(SourcesOf(1), ElementsAre("C:\\site\\a.txt"));
    EXPECT_THAT(SourcesOf(2), ElementsAre("C:\\site\\b.txt"));
    EXPECT_THAT(SourcesOf(3), ElementsAre("C:\\site\\c.txt"));
    EXPECT_EQ(Content("site/index.htm"), "another b\r\n<!--BODY HERE-->\r\nanother c\n\r\n");
}

TEST_F(WatchLoopTest, AnErrorIsToldAndTheNextSaveMendsIt)
{
    Put("site/_html.txt", PageList({"index"}, "!++none.txt"));
    face.steps = {[&] { Put("site/none.txt", "here\n"); }};
    EXPECT_TRUE(Run());
    ASSERT_EQ(face.records.size(), 2U);
    ASSERT_TRUE(face.records[0].error);
    EXPECT_THAT(face.records[0].error->text, HasSubstr("cannot read C:\\site\\none.txt"));
    EXPECT_EQ(face.records[0].error->where.line, 3);
    EXPECT_FALSE(face.records[1].error);
    EXPECT_THAT(SourcesOf(1), ElementsAre("C:\\site\\none.txt"));
}

TEST_F(WatchLoopTest, ASourceThatGoesIsToldAndBuiltWhenItIsBack)
{
    face.steps = {
        [&] { fs::rename(Native("site/_template.txt"), Native("site/away")); },
        [&] { fs::rename(Native("site/away"), Native("site/_template.txt")); },
        [&] { fs::rename(Native("site"), Native("away")); },
        [&] { fs::rename(Native("away"), Native("site")); },
    };
    Run();
    ASSERT_EQ(face.records.size(), 5U);
    EXPECT_THAT(face.warnings, ElementsAre(0U, 1U, 0U, 0U, 0U));
    EXPECT_FALSE(face.records[1].error);
    ASSERT_TRUE(face.records[3].error);
    EXPECT_EQ(face.records[3].error->text, "cannot change to C:\\site: no such folder");
    EXPECT_FALSE(face.records[4].error);
    EXPECT_FALSE(face.records[4].written.empty());
}

TEST_F(WatchLoopTest, OneSaveInStepsIsOneBuild)
{
    std::thread saving;
    face.steps = {[&] {
                      saving = std::thread([&] {
                          std::this_thread::sleep_for(milliseconds(250));
                          fs::remove(Native("site/_html.txt"));
                          std::this_thread::sleep_for(milliseconds(500));
                          Put("site/_html.txt", PageList({"index"}, "new"));
                      });
                  },
                  [&] { StopLater(); }};
    Run();
    saving.join();
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_EQ(face.warnings[1], 0U);
    EXPECT_EQ(Content("site/index.htm"), "new\r\n");
}

/// The page with the site map reads what the build before has left.
TEST_F(WatchLoopTest, ASiteMapOfTheBuildItselfIsBuiltOnceMore)
{
    Put("site/_group.txt");
    Put("site/_sitemap.txt", "none yet\n");
    Put("site/_html.txt", PageList({"index"}, "<!--SITEMAPHERE-->"));
    face.steps = {[] {}};
    Run();
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_THAT(SourcesOf(1), ElementsAre("C:\\site\\_sitemap.txt"));
    EXPECT_THAT(Content("site/index.htm"), HasSubstr("index.htm"));
}

TEST_F(WatchLoopTest, AFileThatTheFirstBuildMakesIsTakenInByTheNext)
{
    Put("site/_html.txt", PageList({"index"}, "text") + "++_toc.txt\n");
    face.steps = {[] {}, [&] { StopLater(); }};
    Run();
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_THAT(SourcesOf(1), ElementsAre("C:\\site\\_toc.txt"));
    EXPECT_THAT(Content("site/index.htm"), HasSubstr("index.htm"));
}

TEST_F(WatchLoopTest, WhatAMemberMakesForTheMainFolderIsTakenInByTheNextBuild)
{
    face.is_group = true;
    Put("site/_group.txt", "news\n");
    Put("site/_html.txt", PageList({"index"}, "text") + "++news/_toc.txt\n");
    Put("site/news/_template.txt", ";\n");
    Put("site/news/_html.txt", PageList({"item"}));
    face.steps = {[] {}, [&] { StopLater(); }};
    Run();
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_THAT(Content("site/index.htm"), HasSubstr("item.htm"));
}

/// The main folder comes first, so the group never gets as far as the member.
TEST_F(WatchLoopTest, AMemberThatIsBuiltElsewhereLetsItsGroupGoOn)
{
    face.is_group = true;
    Put("site/_group.txt", "part\n");
    Put("site/_sitemap.txt");
    Put("site/_html.txt", PageList({"index"}, "<!--SITEMAPHERE-->"));
    Put("site/part/_template.txt", ";\n");
    Put("site/part/_html.txt", PageList({"item"}));
    face.steps = {[&] { Put("site/part/_sitemap.txt", "item.htm\">T</a>\n"); }, [] {},
                  [&] { StopLater(); }};
    Run();
    ASSERT_GE(face.records.size(), 2U);
    EXPECT_TRUE(face.records[0].error);
    EXPECT_FALSE(face.records[1].error);
    EXPECT_THAT(Content("site/index.htm"), HasSubstr("part/item.htm"));
    EXPECT_TRUE(Exists("site/part/item.htm"));
}

/// Each build makes the page longer by a line.
TEST_F(WatchLoopTest, WhatNeverComesToRestIsLeftAfterThreeBuilds)
{
    Put("site/index.htm", "0\n");
    Put("site/_html.txt", PageList({"index"}, "!++index.htm\nmore"));
    face.steps = {[] {}, [] {}, [] {}, [&] { StopLater(); }};
    Run();
    EXPECT_EQ(face.records.size(), 4U);
}

TEST_F(WatchLoopTest, AGroupIsBuiltWithItsMembers)
{
    face.is_group = true;
    Put("site/_group.txt", "news\n");
    Put("site/news/_template.txt", ";\n");
    Put("site/news/_html.txt", PageList({"item"}));
    face.steps = {
        [&] { Put("site/news/_html.txt", PageList({"item"}, "new")); },
        [&] { Put("site/_group.txt", "news\n\n"); },
    };
    Run();
    ASSERT_EQ(face.records.size(), 3U);
    EXPECT_THAT(SourcesOf(1), ElementsAre("C:\\site\\news\\_html.txt"));
    EXPECT_THAT(SourcesOf(2), ElementsAre("C:\\site\\_group.txt"));
    EXPECT_EQ(Content("site/news/item.htm"), "new\r\n");
}

TEST_F(WatchLoopTest, SettingsThatABuildReadsAreWatched)
{
    face.steps = {[&] { Put("utils/kivaddr.ini", "\n"); }};
    Run();
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_THAT(SourcesOf(1), Contains("C:\\utils\\kivaddr.ini"));
}

TEST_F(WatchLoopTest, ABuildThatIsStoppedEndsBetweenTwoPages)
{
    Put("site/_html.txt", PageList({"a", "b", "c"}, "old"));
    face.steps = {[&] { Put("site/_html.txt", PageList({"a", "b", "c"}, "new")); }};
    face.before_build = [&] {
        face.reporter->asked = face.records.size() == 1 ? &stop : nullptr;
        face.reporter->after = 2;
    };
    EXPECT_FALSE(Run());
    ASSERT_EQ(face.records.size(), 2U);
    EXPECT_TRUE(face.records[1].was_stopped);
    EXPECT_FALSE(face.records[1].error);
    EXPECT_EQ(Content("site/a.htm"), "new\r\n");
    EXPECT_EQ(Content("site/b.htm"), "new\r\n");
    EXPECT_EQ(Content("site/c.htm"), "old\r\n");
}

TEST_F(WatchLoopTest, AnotherThreadHasItsTasksDone)
{
    std::thread other;
    std::atomic<bool> is_in_loop = false;
    face.steps = {[&, here = std::this_thread::get_id()] {
        other = std::thread([&, here] {
            loop.Post([&, here] {
                is_in_loop = std::this_thread::get_id() == here;
                stop.Ask();
            });
        });
    }};
    Run();
    other.join();
    EXPECT_TRUE(is_in_loop);
    EXPECT_EQ(face.records.size(), 1U);
}

} // namespace
} // namespace kiv
