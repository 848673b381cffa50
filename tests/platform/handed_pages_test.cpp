// Files that are handed over: written by several threads, put in their places one after the other.
#include "platform/page_workers.h"
#include "tests/platform/drive_test.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>
#include <vector>

namespace kiv {
namespace {

using testing::HasSubstr;

std::string PageName(int number)
{
    return "p" + std::to_string(number) + ".htm";
}

/// Each of its own length.
std::string PageText(int number)
{
    return "page " + std::to_string(number) + std::string(static_cast<std::size_t>(number), '.');
}

class HandedPages : public DriveTest {
  protected:
    HandedPages() { Begin(8); }

    void Begin(std::size_t threads)
    {
        files = MakeDriveFiles({{'C', root}}, threads);
        files->ChangeDirectory("C:\\");
        files->List(".", "*.*");
    }

    void HandOver(const OutputFile& file, std::string bytes)
    {
        files->HandOver(file, bytes, [this, path = file.path](RunError& error) {
            error.hint = "from " + path;
            ++failures;
        });
    }
    void HandOver(const std::string& name, std::string bytes)
    {
        HandOver(files->Open(name), std::move(bytes));
    }

    /// Hands over pages 1 to `count`. Behind the program's back, somebody makes a folder of the
    /// name of page `taken`.
    void HandOverPages(int count, int taken = 0)
    {
        for (int number = 1; number <= count; ++number) {
            const OutputFile file = files->Open(PageName(number));
            if (number == taken)
                PutFolder(PageName(number));
            HandOver(file, PageText(number));
        }
    }

    int failures = 0; // that were told
};

TEST_F(HandedPages, AllOfThemAreThereInTheOrderInWhichTheyCame)
{
    constexpr int kCount = 300;
    Put(PageName(7), "old");
    Put(PageName(9), PageText(9));
    HandOverPages(kCount);
    files->EndHandOvers();

    Names names;
    std::vector<std::string> written;
    for (int number = 1; number <= kCount; ++number) {
        EXPECT_EQ(Content(PageName(number)), PageText(number));
        names.insert(PageName(number));
        written.push_back("C:\\" + PageName(number));
    }
    EXPECT_EQ(NamesIn(), names);
    EXPECT_EQ(files->Written(), written);
    for (const WrittenFile& file : files->WrittenFiles())
        EXPECT_EQ(file.changed, file.path != "C:\\p9.htm") << file.path;
}

TEST_F(HandedPages, NothingBehindAPageThatFailsIsWritten)
{
    for (const std::size_t threads : {1U, 2U, 8U}) {
        SCOPED_TRACE(threads);
        std::filesystem::remove_all(root);
        std::filesystem::create_directory(root);
        Begin(threads);
        Put(PageName(20), "old");
        const std::string error = ErrorOf([&] {
            HandOverPages(60, 17);
            files->EndHandOvers();
        });
        EXPECT_THAT(error, HasSubstr("cannot write C:\\p17.htm"));
        if (threads > 1)
            ErrorOf([&] { files->EndHandOvers(); });

        Names names{PageName(17), PageName(20)};
        for (int number = 1; number < 17; ++number) {
            names.insert(PageName(number));
            EXPECT_EQ(Content(PageName(number)), PageText(number));
        }
        EXPECT_EQ(NamesIn(), names);
        EXPECT_EQ(Content(PageName(20)), "old");
        EXPECT_EQ(files->Written().size(), 16U);
    }
}

TEST_F(HandedPages, AFailureComesAgainUntilItIsTakenAtTheEnd)
{
    ErrorOf([&] { HandOverPages(3, 2); });
    EXPECT_THAT(ErrorOf([&] { files->FileExists("other.txt"); }), HasSubstr("p2.htm"));
    EXPECT_THAT(ErrorOf([&] { files->ReadFile("p1.htm"); }), HasSubstr("p2.htm"));
    EXPECT_THAT(ErrorOf([&] { files->Settle(); }), HasSubstr("p2.htm"));
    EXPECT_THAT(ErrorOf([&] { HandOver("p4.htm", "4"); }), HasSubstr("p2.htm"));
    EXPECT_EQ(failures, 1);
    try {
        files->EndHandOvers();
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.hint, "from C:\\p2.htm");
    }
    EXPECT_EQ(ErrorOf([&] { files->Settle(); }), "");
    EXPECT_EQ(files->ReadFile("p1.htm"), PageText(1));
    EXPECT_EQ(NamesIn(), (Names{"p1.htm", "p2.htm"}));
}

TEST_F(HandedPages, WhoReadsSeesThem)
{
    for (int round = 0; round < 20; ++round) {
        const std::string text = PageText(round);
        HandOver("a.htm", text);
        EXPECT_EQ(files->ReadFile("A.HTM"), text);
        HandOver("b.htm", text);
        EXPECT_TRUE(files->FileExists("b.htm"));
        HandOver("c.htm", text);
        EXPECT_EQ(files->Stamp("c.htm").size, text.size());
        HandOver("d.htm", text);
        EXPECT_EQ(files->ListFiles(".", "*.htm").size(), 4U);
        HandOver("a.htm", "x");
        files->AppendToFile("a.htm", text);
        EXPECT_EQ(files->ReadPart("a.htm", 1, text.size()), text);
        HandOver("a.htm", "gone");
        EXPECT_TRUE(files->DeleteFile("a.htm"));
        HandOver("d.htm", "before");
        files->WriteFile("D.htm", "behind");
        EXPECT_EQ(Content("d.htm"), "behind");
        files->DeleteFile("d.htm");
    }
    files->EndHandOvers();
}

// The second look at a file must not be made before the first one's content stands there.
TEST_F(HandedPages, APageOfTheSamePlaceComesBehindTheFirst)
{
    Put("a.htm", "old");
    for (int round = 0; round < 20; ++round) {
        const OutputFile first = files->Open("a.htm");
        const OutputFile second = files->Open("A.HTM");
        HandOver(first, "new");
        HandOver(second, "old");
        files->Settle();
        EXPECT_EQ(Content("a.htm"), "old");
    }
    files->EndHandOvers();
    EXPECT_EQ(NamesIn(), (Names{"a.htm"}));
    EXPECT_EQ(files->Written().size(), 40U);
}

TEST_F(HandedPages, NamesThatASystemMayTakeForOthersWaitForTheirTurn)
{
    for (const char* const name : {"caf\xE9.htm", "CAF\xC9.HTM", "long~1.htm", "a b.htm"}) {
        HandOver("first.htm", name);
        HandOver(name, "1");
        HandOver(name, "2");
    }
    files->EndHandOvers();
    EXPECT_EQ(NamesIn(), (Names{"caf\xC3\xA9.htm", "long~1.htm", "a b.htm", "first.htm"}));
    EXPECT_EQ(Content("caf\xC3\xA9.htm"), "2");
}

TEST_F(HandedPages, AFileThatHoldsTheBytesIsLeftAlone)
{
    HandOverPages(40);
    files->EndHandOvers();
    const auto past = std::filesystem::last_write_time(Native("p3.htm")) - std::chrono::hours(1);
    for (int number = 1; number <= 40; ++number)
        std::filesystem::last_write_time(Native(PageName(number)), past);
    const auto before = std::filesystem::last_write_time(Native("p3.htm"));
    Put("p5.htm", "other");

    Begin(8);
    HandOverPages(40);
    files->EndHandOvers();
    for (int number = 1; number <= 40; ++number)
        EXPECT_EQ(std::filesystem::last_write_time(Native(PageName(number))) == before, number != 5)
            << number;
    EXPECT_EQ(Content("p5.htm"), PageText(5));
    EXPECT_EQ(files->Written().size(), 40U);
}

TEST_F(HandedPages, WhatAnotherProgramMakesOrTakesAwayMeanwhileIsNoHindrance)
{
    Put("gone.htm", "old");
    files->Refresh();
    files->List(".", "*.*");
    const OutputFile gone = files->Open("gone.htm");
    const OutputFile made = files->Open("made.htm");
    const OutputFile last = files->Open("last.htm");
    std::filesystem::remove(Native("gone.htm"));
    Put("made.htm", "somebody's");
    HandOver(gone, "1");
    HandOver(made, "2");
    HandOver(last, "3");
    files->EndHandOvers();
    EXPECT_EQ(Content("gone.htm"), "1");
    EXPECT_EQ(Content("made.htm"), "2");
    EXPECT_EQ(Content("last.htm"), "3");
    EXPECT_EQ(NamesIn(), (Names{"gone.htm", "made.htm", "last.htm"}));
}

TEST_F(HandedPages, LargeOnesWaitForRoom)
{
    const std::string large(25'000'000, 'x');
    for (int number = 1; number <= 4; ++number)
        HandOver(PageName(number), large);
    files->EndHandOvers();
    for (int number = 1; number <= 4; ++number)
        EXPECT_EQ(std::filesystem::file_size(Native(PageName(number))), large.size());
}

TEST_F(HandedPages, WhatNobodyEndedIsWrittenAllTheSame)
{
    HandOverPages(50);
    files.reset();
    for (int number = 1; number <= 50; ++number)
        EXPECT_EQ(Content(PageName(number)), PageText(number));
    EXPECT_EQ(NamesIn().size(), 50U);
}

TEST_F(HandedPages, WithOneThreadEachIsWrittenAtOnce)
{
    Begin(1);
    HandOver("a.htm", "1");
    EXPECT_EQ(Content("a.htm"), "1");
    PutFolder("b.htm");
    EXPECT_THAT(ErrorOf([&] {
                    HandOver({"C:\\b.htm", Below("b.htm"), false}, "2");
                }),
                HasSubstr("C:\\b.htm"));
    EXPECT_EQ(failures, 0); // the caller knows the place
    EXPECT_EQ(ErrorOf([&] { files->EndHandOvers(); }), "");
}

TEST_F(HandedPages, TheUserMaySayHowManyThreadsThereAre)
{
    EXPECT_EQ(ThreadLimits::From("1").most, 1U);
    EXPECT_EQ(ThreadLimits::From("3").most, 3U);
    EXPECT_TRUE(ThreadLimits::From("3").is_given);
    EXPECT_EQ(ThreadLimits::From("999").most, 64U);
    for (const char* const nothing : {"", "0", "-1", "x", "3x", " 3", "99999999999999999999"}) {
        EXPECT_EQ(ThreadLimits::From(nothing).most, 8U) << nothing;
        EXPECT_FALSE(ThreadLimits::From(nothing).is_given) << nothing;
    }
}

// More threads than processors are for those who wait, not for those who work.
TEST_F(HandedPages, OnlyWhoWaitsForSomethingIsSaidToWait)
{
    constexpr std::chrono::milliseconds kRest(2);
    const WaitWatch rested;
    std::this_thread::sleep_for(kRest);
    EXPECT_GE(rested.Waited(), kRest);
    const WaitWatch unasked(true);
    std::this_thread::sleep_for(kRest);
    EXPECT_EQ(unasked.Waited(), WaitWatch::Clock::duration());
    EXPECT_GE(unasked.Elapsed(), kRest);
#ifdef __linux__ // elsewhere nobody counts
    const WaitWatch worked;
    while (worked.Elapsed() < kRest) {
    }
    EXPECT_EQ(worked.Waited(), WaitWatch::Clock::duration());
#endif
}

TEST_F(HandedPages, ALogIsToldOfEachWhenItStandsInItsPlace)
{
    struct Log : LookLog {
        explicit Log(Drives& drives) : drives_(drives) {}
        void Looks(const std::string&) override {}
        void Opens(const std::string&) override {}
        void HasRead(const std::string&, std::string_view) override {}
        void HasWritten(const OutputFile& file, const std::string_view* bytes) override
        {
            EXPECT_EQ(drives_.StateNow(file.path).size, bytes->size());
            told.push_back(file.path);
        }
        Drives& drives_;
        std::vector<std::string> told;
    };
    Log log(*files);
    files->TellLooksTo(&log);
    HandOverPages(100);
    files->EndHandOvers();
    files->TellLooksTo(nullptr);
    EXPECT_EQ(log.told, files->Written());
    EXPECT_EQ(log.told.size(), 100U);
}

} // namespace
} // namespace kiv
