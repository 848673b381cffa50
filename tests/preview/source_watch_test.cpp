#include "preview/source_watch.h"

#include "odd_drives.h"
#include "platform/drives.h"
#include "platform/run_error.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kiv {
namespace {

namespace fs = std::filesystem;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

/// A watch of drives, and the time as the test has it.
class Watching {
  public:
    explicit Watching(Drives& drives) : watch(drives) {}

    void Build(const std::function<void()>& build,
               SourceWatch::Ended ended = SourceWatch::Ended::whole)
    {
        watch.Begin(now);
        build();
        watch.End(ended, now);
    }
    std::vector<std::string> Changed() { return watch.Look(now).changed; }

    SourceWatch watch;
    SourceWatch::Instant now;
};

class SourceWatchTest : public testing::Test, public test::DriveFolder {
  protected:
    void Build(const std::function<void()>& build) { watching_.Build(build); }
    std::vector<std::string> Changed() { return watching_.Changed(); }

    /// As many editors save: another file gets the name.
    void Replace(const std::string& below, const std::string& bytes) const
    {
        Put(below + "~", bytes);
        fs::rename(Native(below + "~"), Native(below));
    }

    const std::unique_ptr<Drives> drives_ = MakeDriveFiles({{'C', Root().string()}});
    Watching watching_{*drives_};
};

TEST_F(SourceWatchTest, WhatStaysIsNoChange)
{
    Put("site/a.txt", "a");
    Build([&] {
        drives_->ReadFile("C:\\site\\a.txt");
        drives_->FileExists("C:\\site\\none.txt");
        drives_->FolderExists("C:\\site");
    });
    EXPECT_THAT(watching_.watch.Places(),
                ElementsAre("C:\\site", "C:\\site\\a.txt", "C:\\site\\none.txt"));
    EXPECT_THAT(Changed(), IsEmpty());
    watching_.now += seconds(10);
    EXPECT_THAT(Changed(), IsEmpty());
}

TEST_F(SourceWatchTest, WhatWasReadChangesInEveryWay)
{
    for (const char* const name : {"site/a.txt", "site/b.txt", "site/c.txt", "site/d.txt"})
        Put(name, "text");
    Build([&] {
        drives_->ReadFile("C:\\site\\a.txt");
        drives_->ReadPart("C:\\site\\b.txt", 0, 2);
        drives_->ReadFile("C:\\site\\c.txt");
        drives_->ReadFile("C:\\site\\d.txt");
    });
    Put("site/a.txt", "other text");
    Put("site/b.txt", "other text");
    Replace("site/c.txt", "other text");
    fs::remove(Native("site/d.txt"));
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\a.txt", "C:\\site\\b.txt", "C:\\site\\c.txt",
                                       "C:\\site\\d.txt"));
}

TEST_F(SourceWatchTest, WhatWasChangedWhileItWasReadIsAChange)
{
    Put("site/a.txt", "text");
    Build([&] {
        drives_->ReadFile("C:\\site\\a.txt");
        Put("site/a.txt", "other text");
    });
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\a.txt"));
}

TEST_F(SourceWatchTest, WhatWasLookedForInVainIsAChangeWhenItComes)
{
    Build([&] {
        drives_->FileExists("C:\\site\\a.txt");
        drives_->FileExists("C:\\site\\parts\\deep\\b.txt");
        EXPECT_THROW(drives_->ReadFile("C:\\site\\c.txt"), RunError);
    });
    EXPECT_THAT(Changed(), IsEmpty());
    Put("site/a.txt");
    PutFolder("site/parts");
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\a.txt"));
    Put("site/parts/deep/b.txt");
    Put("site/c.txt");
    EXPECT_THAT(Changed(),
                ElementsAre("C:\\site\\a.txt", "C:\\site\\c.txt", "C:\\site\\parts\\deep\\b.txt"));
}

TEST_F(SourceWatchTest, WhatComesMayBeSpelledInAnotherCase)
{
    Build([&] {
        drives_->FileExists("C:\\site\\a.txt");
        drives_->FileExists("C:\\site\\Parts\\b.txt");
    });
    watching_.now += seconds(4);
    EXPECT_THAT(Changed(), IsEmpty());
    watching_.now += seconds(1);
    EXPECT_THAT(Changed(), IsEmpty());
    Put("site/A.TXT");
    Put("site/PARTS/B.txt");
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\Parts\\b.txt", "C:\\site\\a.txt"));
}

TEST_F(SourceWatchTest, WhatWasOnlyLookedForMayHoldAnything)
{
    Put("site/a.txt", "text");
    PutFolder("site/parts");
    Build([&] {
        drives_->FileExists("C:\\site\\a.txt");
        drives_->FolderExists("C:\\site\\parts");
    });
    Put("site/a.txt", "other text");
    Put("site/parts/new.txt");
    EXPECT_THAT(Changed(), IsEmpty());
    fs::remove(Native("site/a.txt"));
    fs::remove_all(Native("site/parts"));
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\a.txt", "C:\\site\\parts"));
}

TEST_F(SourceWatchTest, WhatTheBuildWroteItselfIsNoChange)
{
    Put("site/_toc.txt", "old");
    Put("site/batch.txt", "old");
    Put("site/gone.txt", "old");
    Build([&] {
        for (const char* const name : {"_toc.txt", "batch.txt", "gone.txt"})
            drives_->ReadFile("C:\\site\\" + std::string(name));
        drives_->FileExists("C:\\site\\page.htm");
        drives_->FolderExists("C:\\site\\made");
        drives_->WriteFile("C:\\SITE\\_TOC.TXT", "new one");
        drives_->WriteFile("C:\\site\\page.htm", "page");
        drives_->AppendToFile("C:\\site\\batch.txt", "line");
        drives_->DeleteFile("C:\\site\\gone.txt");
        drives_->MakeFolder("C:\\site\\made");
    });
    EXPECT_THAT(Changed(), IsEmpty());
    watching_.now += seconds(10);
    EXPECT_THAT(Changed(), IsEmpty());
    Put("site/_toc.txt", "by hand");
    fs::remove(Native("site/page.htm"));
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\_toc.txt", "C:\\site\\page.htm"));
}

TEST_F(SourceWatchTest, WhatSomebodyElseMadeOfAnOwnFileIsAChange)
{
    Put("site/_toc.txt", "old");
    Build([&] {
        drives_->ReadFile("C:\\site\\_toc.txt");
        drives_->WriteFile("C:\\site\\_toc.txt", "new one");
        Put("site/_toc.txt", "by hand");
    });
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\_toc.txt"));
}

TEST_F(SourceWatchTest, WhatWasReadBeforeItWasWrittenIsOutdated)
{
    Put("site/_toc.txt", "old");
    Put("site/same.txt", "same");
    Build([&] {
        drives_->ReadFile("C:\\site\\_toc.txt");
        drives_->WriteFile("C:\\site\\_toc.txt", "new one");
        drives_->ReadFile("C:\\site\\same.txt");
        drives_->WriteFile("C:\\site\\same.txt", "same");
        drives_->WriteFile("C:\\site\\page.htm", "page");
        drives_->ReadFile("C:\\site\\page.htm");
    });
    EXPECT_THAT(watching_.watch.Outdated(), ElementsAre("C:\\site\\_toc.txt"));
    Build([&] {
        drives_->ReadFile("C:\\site\\_toc.txt");
        drives_->WriteFile("C:\\site\\_toc.txt", "new one");
    });
    EXPECT_THAT(watching_.watch.Outdated(), IsEmpty());
}

TEST_F(SourceWatchTest, WhatTheBuildLookedForInVainAndThenMadeIsOutdated)
{
    const auto build = [&] {
        if (drives_->FileExists("C:\\site\\_toc.txt"))
            drives_->ReadFile("C:\\site\\_toc.txt");
        drives_->WriteFile("C:\\site\\_toc.txt", "contents");
        drives_->WriteFile("C:\\site\\page.htm", "page");
        drives_->FileExists("C:\\site\\page.htm");
    };
    Build(build);
    EXPECT_THAT(watching_.watch.Outdated(), ElementsAre("C:\\site\\_toc.txt"));
    EXPECT_THAT(Changed(), IsEmpty());
    Build(build);
    EXPECT_THAT(watching_.watch.Outdated(), IsEmpty());
}

TEST_F(SourceWatchTest, WhatTheBuildMadeAndRemovedAgainIsNotOutdated)
{
    Build([&] {
        drives_->FileExists("C:\\site\\a.txt");
        drives_->WriteFile("C:\\site\\a.txt", "text");
        drives_->DeleteFile("C:\\site\\a.txt");
    });
    EXPECT_THAT(watching_.watch.Outdated(), IsEmpty());
}

TEST_F(SourceWatchTest, ABuildThatWasStoppedKeepsTheSourcesBeforeIt)
{
    Put("site/a.txt", "text");
    Put("site/b.txt", "text");
    Build([&] {
        drives_->ReadFile("C:\\site\\a.txt");
        drives_->ReadFile("C:\\site\\b.txt");
    });
    Put("site/a.txt", "other text");
    watching_.Build([&] { drives_->ReadFile("C:\\site\\a.txt"); }, SourceWatch::Ended::stopped);
    EXPECT_THAT(Changed(), IsEmpty());
    Put("site/b.txt", "other text");
    EXPECT_THAT(Changed(), ElementsAre("C:\\site\\b.txt"));
    Build([&] { drives_->ReadFile("C:\\site\\a.txt"); });
    EXPECT_THAT(watching_.watch.Places(), ElementsAre("C:\\site\\a.txt"));
}

TEST_F(SourceWatchTest, AFolderMayGoAndComeBack)
{
    Put("site/a.txt", "text");
    Build([&] {
        drives_->ChangeDirectory("C:\\site");
        drives_->ReadFile("a.txt");
    });
    fs::rename(Native("site"), Native("elsewhere"));
    const SourceWatch::Sight sight = watching_.watch.Look(watching_.now);
    EXPECT_THAT(sight.changed, ElementsAre("C:\\site", "C:\\site\\a.txt"));
    EXPECT_TRUE(sight.is_missing);
    fs::rename(Native("elsewhere"), Native("site"));
    EXPECT_THAT(Changed(), IsEmpty());
}

TEST_F(SourceWatchTest, ALookTellsWhetherSomethingIsStillMoving)
{
    Put("site/a.txt", "text");
    Build([&] { drives_->ReadFile("C:\\site\\a.txt"); });
    Put("site/a.txt", "half of");
    EXPECT_TRUE(watching_.watch.Look(watching_.now).is_moving);
    Put("site/a.txt", "half of another text");
    EXPECT_TRUE(watching_.watch.Look(watching_.now).is_moving);
    EXPECT_FALSE(watching_.watch.Look(watching_.now).is_moving);
}

TEST_F(SourceWatchTest, OnlyABuildIsListenedTo)
{
    Build([&] { drives_->FileExists("C:\\site\\a.txt"); });
    drives_->FileExists("C:\\site\\b.txt");
    EXPECT_THAT(watching_.watch.Places(), ElementsAre("C:\\site\\a.txt"));
}

class OddFilesTest : public testing::Test {
  protected:
    OddFilesTest() { drives_.Put("site/a.txt", "text"); }

    void Read()
    {
        watching_.Build([&] {
            if (drives_.refused.empty())
                drives_.ReadFile("C:\\site\\a.txt");
            else
                drives_.FileExists("C:\\site\\a.txt");
        });
    }

    test::OddDrives drives_;
    Watching watching_{drives_};
};

TEST_F(OddFilesTest, TwoSavesInOneTickOfTheClockAreToldByTheirContent)
{
    Read();
    drives_.Put("site/a.txt", "next");
    EXPECT_THAT(watching_.Changed(), IsEmpty()) << "the state is too young to tell";
    watching_.now += seconds(3);
    EXPECT_THAT(watching_.Changed(), ElementsAre("C:\\site\\a.txt"));
    EXPECT_THAT(watching_.Changed(), ElementsAre("C:\\site\\a.txt")) << "until it is built";
    Read();
    watching_.now += seconds(3);
    EXPECT_THAT(watching_.Changed(), IsEmpty());
}

TEST_F(OddFilesTest, WhatIsOldIsReadOnceAndThenTrusted)
{
    Read();
    drives_.ForgetSought();
    watching_.now += seconds(3);
    EXPECT_THAT(watching_.Changed(), IsEmpty());
    EXPECT_THAT(drives_.Sought(), ElementsAre("C:\\SITE\\A.TXT"));
    Read();
    drives_.ForgetSought();
    watching_.now += seconds(10);
    EXPECT_THAT(watching_.Changed(), IsEmpty());
    EXPECT_THAT(drives_.Sought(), IsEmpty());
}

TEST_F(OddFilesTest, AnIdentityThatIsMadeUpAnewIsNoChange)
{
    drives_.makes_up_identities = true;
    Read();
    EXPECT_THAT(watching_.Changed(), IsEmpty());
    drives_.Put("site/a.txt", "next");
    EXPECT_THAT(watching_.Changed(), ElementsAre("C:\\site\\a.txt"));
}

TEST_F(OddFilesTest, WhatRefusesALookIsToldAndNoChange)
{
    Read();
    drives_.refused = {"C:\\site\\a.txt"};
    const SourceWatch::Sight sight = watching_.watch.Look(watching_.now);
    EXPECT_THAT(sight.changed, IsEmpty());
    EXPECT_EQ(sight.refused, "C:\\site\\a.txt");
    EXPECT_EQ(sight.refused_state.error, 5);
    drives_.refused.clear();
    EXPECT_THAT(watching_.Changed(), IsEmpty());
    drives_.Put("site/a.txt", "a longer text");
    EXPECT_THAT(watching_.Changed(), ElementsAre("C:\\site\\a.txt"));
}

TEST_F(OddFilesTest, WhatRefusedTheBuildIsAChangeWhenItIsBack)
{
    drives_.refused = {"C:\\site\\a.txt"};
    Read();
    const SourceWatch::Sight sight = watching_.watch.Look(watching_.now);
    EXPECT_THAT(sight.changed, IsEmpty());
    EXPECT_FALSE(sight.refused) << "the build has told of it";
    drives_.refused.clear();
    EXPECT_THAT(watching_.Changed(), ElementsAre("C:\\site\\a.txt"));
}

} // namespace
} // namespace kiv
