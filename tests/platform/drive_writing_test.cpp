// Files are written whole: they hold their old content or the new, and nothing is left beside them.
#include "tests/platform/drive_test.h"

#include <atomic>
#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using DriveWriting = DriveTest;

TEST_F(DriveWriting, ANewFileTakesItsNameAsWritten)
{
    files->WriteFile("About.HTM", "1\r\n");
    files->WriteFile("caf\xE9 .txt", "2");
    files->WriteFile("empty.txt", "");
    EXPECT_EQ(NamesIn(), (Names{"About.HTM", "caf\xC3\xA9 .txt", "empty.txt"}));
    EXPECT_EQ(Content("About.HTM"), "1\r\n");
    EXPECT_EQ(Content("empty.txt"), "");
}

TEST_F(DriveWriting, AFileThatDiffersInCaseIsReplacedAndKeepsItsName)
{
    Put("_TOC.txt", "old");
    files->WriteFile("_toc.TXT", "new");
    EXPECT_EQ(NamesIn(), (Names{"_TOC.txt"}));
    EXPECT_EQ(Content("_TOC.txt"), "new");
    EXPECT_THAT(files->Written(), ElementsAre("C:\\_toc.TXT"));
}

TEST_F(DriveWriting, TwoPagesWhoseNamesDifferInCaseAreOneFile)
{
    files->WriteFile("About.htm", "1");
    files->WriteFile("about.HTM", "2");
    EXPECT_EQ(NamesIn(), (Names{"About.htm"}));
    EXPECT_EQ(Content("About.htm"), "2");
}

TEST_F(DriveWriting, AFileThatHoldsTheBytesIsLeftAlone)
{
    const std::string large(600'000, 'x');
    Put("a.htm", large);
    const auto past = std::filesystem::last_write_time(Native("a.htm")) - std::chrono::hours(1);
    std::filesystem::last_write_time(Native("a.htm"), past);
    const auto before = std::filesystem::last_write_time(Native("a.htm")); // as the disk holds it
    files->WriteFile("a.htm", large);
    EXPECT_EQ(std::filesystem::last_write_time(Native("a.htm")), before);
    EXPECT_THAT(files->Written(), ElementsAre("C:\\a.htm")); // counts all the same

    std::string other = large;
    other.back() = 'y';
    files->WriteFile("a.htm", other);
    EXPECT_NE(std::filesystem::last_write_time(Native("a.htm")), before);
    EXPECT_TRUE(Content("a.htm") == other);
}

TEST_F(DriveWriting, OpeningChecksThePlaceAndTouchesNothing)
{
    Put("a.htm", "old");
    PutFolder("sub");
    const std::string long_name(256, 'n');
    for (const std::string& path :
         {std::string("no\\a.htm"), std::string("sub"), std::string("SUB"), std::string("sub\\"),
          std::string(""), std::string("a.htm\\"), std::string("a.htm\\b.htm"),
          std::string("a\0b", 3), long_name, std::string("C:\\")})
        EXPECT_THAT(ErrorOf([&] { files->Open(path); }), StartsWith("file: ")) << path;
    EXPECT_THAT(ErrorOf([&] { files->Open("no\\a.htm"); }), HasSubstr("C:\\no\\a.htm"));

    const OutputFile old_file = files->Open("A.htm");
    EXPECT_EQ(old_file.path, "C:\\A.htm");
    EXPECT_TRUE(old_file.exists);
    const OutputFile new_file = files->Open("sub/../SUB/New.htm");
    EXPECT_EQ(new_file.path, "C:\\SUB\\New.htm");
    EXPECT_FALSE(new_file.exists);
    EXPECT_EQ(NamesIn(), (Names{"a.htm", "sub"}));
    EXPECT_EQ(NamesIn("sub"), Names{});
    EXPECT_EQ(files->ReadFile("a.htm"), "old"); // the old content up to Commit
    EXPECT_TRUE(files->Written().empty());
}

TEST_F(DriveWriting, AFileThatComesOrGoesBetweenOpenAndCommit)
{
    const OutputFile coming = files->Open("a.htm");
    Put("a.htm", "by another program");
    files->Commit(coming, "1");
    EXPECT_EQ(Content("a.htm"), "1");
    const OutputFile going = files->Open("a.htm");
    std::filesystem::remove(Native("a.htm"));
    files->Commit(going, "2");
    EXPECT_EQ(Content("a.htm"), "2");
    const OutputFile blocked = files->Open("b.htm");
    PutFolder("b.htm");
    EXPECT_THAT(ErrorOf([&] { files->Commit(blocked, "3"); }), StartsWith("file: "));
    EXPECT_EQ(NamesIn(), (Names{"a.htm", "b.htm"}));
}

TEST_F(DriveWriting, AFolderThatHasChangedSinceItWasListed)
{
    Put("gone.htm", "1");
    Put("folder.htm", "1");
    Put("other.htm", "1");
    EXPECT_FALSE(files->FileExists("no.htm")); // looks through the folder
    Put("come.htm", "by another program");
    PutFolder("new.htm");
    std::filesystem::remove(Native("gone.htm"));
    std::filesystem::remove(Native("folder.htm"));
    PutFolder("folder.htm");
    Put("other.htm", "longer, by another program");
    for (const char* name : {"come.htm", "gone.htm", "other.htm", "free.htm"}) {
        files->WriteFile(name, "2");
        EXPECT_EQ(Content(name), "2") << name;
    }
    for (const char* name : {"new.htm", "folder.htm"})
        EXPECT_THAT(ErrorOf([&] { files->WriteFile(name, "2"); }),
                    HasSubstr("a folder has this name"))
            << name;
    EXPECT_THAT(ErrorOf([&] { files->Open(std::string(256, 'n')); }), StartsWith("file: "));
    EXPECT_EQ(NamesIn(),
              (Names{"come.htm", "folder.htm", "free.htm", "gone.htm", "new.htm", "other.htm"}));
}

TEST_F(DriveWriting, WrittenHasEveryClosingInOrder)
{
    PutFolder("Sub");
    files->WriteFile("b.htm", "1");
    files->WriteFile("c:sub/a.htm", "2");
    files->WriteFile("b.htm", "1");
    files->WriteSource("up.bat", "put");
    files->WriteSource("up.bat", "put");
    files->DeleteFile("up.bat");
    EXPECT_THAT(files->Written(), ElementsAre("C:\\b.htm", "C:\\sub\\a.htm", "C:\\b.htm",
                                              "C:\\up.bat", "C:\\up.bat"));
    files->Refresh();
    EXPECT_TRUE(files->Written().empty());
}

/// The paths below C: of what was written and is another file now.
Names Changed(Files& files)
{
    Names changed;
    for (const WrittenFile& file : files.WrittenFiles())
        if (file.changed)
            changed.insert(file.path.substr(3));
    return changed;
}

TEST_F(DriveWriting, AFileIsChangedByWhatItIsInTheEnd)
{
    for (const char* const name : {"same.htm", "other.htm", "size.htm", "there_and_back.htm",
                                   "back_and_there.htm", "added.bat", "again.bat"})
        Put(name, "old");
    files->WriteFile("same.htm", "old");
    files->WriteFile("other.htm", "new");
    files->WriteFile("size.htm", "older");
    files->WriteFile("new.htm", "");
    files->WriteFile("twice.htm", "1");
    files->WriteFile("twice.htm", "1");
    files->WriteFile("there_and_back.htm", "another page");
    files->WriteFile("There_And_Back.htm", "old");
    files->WriteFile("back_and_there.htm", "old");
    files->WriteFile("back_and_there.htm", "new");
    files->AppendToFile("added.bat", "x");
    files->DeleteFile("again.bat");
    files->AppendToFile("again.bat", "o");
    files->AppendToFile("again.bat", "ld");
    files->AppendToFile("made.bat", "x");
    EXPECT_EQ(Changed(*files), (Names{"other.htm", "size.htm", "new.htm", "twice.htm",
                                      "back_and_there.htm", "added.bat", "made.bat"}));
    files->AppendToFile("again.bat", "er");
    EXPECT_THAT(Changed(*files), testing::Contains("again.bat"));

    files->Refresh(); // a new run
    EXPECT_TRUE(files->WrittenFiles().empty());
    files->WriteFile("other.htm", "new");
    files->WriteFile("twice.htm", "1");
    EXPECT_EQ(Changed(*files), Names{});
}

TEST_F(DriveWriting, AFileIsOneHoweverItIsCalled)
{
    files->WriteFile("a.htm", "1");
    files->WriteFile("C:/A.HTM", "2");
    files->WriteFile("b.htm", "2");
    const std::vector<WrittenFile> written = files->WrittenFiles();
    ASSERT_EQ(written.size(), 3U);
    EXPECT_EQ(written[1].path, "C:\\A.HTM");
    EXPECT_EQ(written[0].place, written[1].place);
    EXPECT_NE(written[0].place, written[2].place);
}

TEST_F(DriveWriting, AppendingMakesAMissingFile)
{
    files->AppendToFile("Up.bat", "one\r\n");
    files->AppendToFile("up.BAT", "two\r\n");
    EXPECT_EQ(NamesIn(), (Names{"Up.bat"}));
    EXPECT_EQ(Content("Up.bat"), "one\r\ntwo\r\n");
    EXPECT_THAT(files->Written(), ElementsAre("C:\\Up.bat", "C:\\up.BAT"));
}

TEST_F(DriveWriting, ANewSourceRefusesAnOldFile)
{
    files->WriteNewSource("Up.bat", "one");
    EXPECT_THAT(ErrorOf([&] { files->WriteNewSource("up.BAT", "two"); }),
                testing::AllOf(StartsWith("file: "), HasSubstr("C:\\up.BAT"),
                               HasSubstr("there is a file of this name already")));
    const OutputFile place = files->Open("come.txt");
    Put("come.txt", "by another program");
    EXPECT_THAT(ErrorOf([&] { files->CommitSource(place, "two", {Expectation::Kind::nothing}); }),
                HasSubstr("there is a file of this name already"));
    EXPECT_EQ(NamesIn(), (Names{"Up.bat", "come.txt"}));
    EXPECT_EQ(Content("Up.bat"), "one");
    EXPECT_EQ(Content("come.txt"), "by another program");
}

TEST_F(DriveWriting, ASourceIsReplacedWhileItIsWhatWasRead)
{
    Put("list.txt", "old");
    files->ReplaceSource("LIST.txt", "old", "new");
    EXPECT_EQ(Content("list.txt"), "new");
    for (const char* const theirs : {"ald", "old and more", ""}) {
        Put("list.txt", theirs);
        EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("list.txt", "old", "new"); }),
                    testing::AllOf(StartsWith("file: "), HasSubstr("C:\\list.txt"),
                                   HasSubstr("another program has changed it")));
        EXPECT_EQ(Content("list.txt"), theirs);
    }
    EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("gone.txt", "old", "new"); }),
                HasSubstr("another program has changed it"));
    EXPECT_EQ(NamesIn(), (Names{"list.txt"}));
}

TEST_F(DriveWriting, WhatWasWrittenCanBeFlushed)
{
    PutFolder("sub");
    files->WriteFile("a.htm", "1");
    files->WriteFile("sub\\b.htm", "2");
    files->WriteFile("gone.htm", "3");
    files->DeleteFile("gone.htm");
    EXPECT_EQ(ErrorOf([&] { files->FlushWritten(); }), "");
    EXPECT_EQ(Content("sub/b.htm"), "2");
}

TEST_F(DriveWriting, ALockHoldsOthersOff)
{
    const auto other = MakeDriveFiles({{'C', root}});
    std::unique_ptr<FolderLock> lock = files->LockFolder("C:\\");
    std::atomic<bool> is_free = false;
    std::thread waiting([&] {
        const auto second = other->LockFolder("C:\\");
        EXPECT_TRUE(is_free);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    is_free = true;
    lock.reset();
    waiting.join();
    EXPECT_THAT(ErrorOf([&] { files->LockFolder("C:\\none"); }), HasSubstr("no such folder"));
}

TEST_F(DriveWriting, ManyNewPagesInOneFolder)
{
    for (int i = 0; i < 999; ++i)
        files->WriteFile("Page" + std::to_string(i) + ".htm", "1");
    EXPECT_EQ(NamesIn().size(), 999U);
    EXPECT_TRUE(files->FileExists("PAGE998.HTM"));
    EXPECT_EQ(files->Written().size(), 999U);
}

} // namespace
} // namespace kiv
