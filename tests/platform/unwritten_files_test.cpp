// Files that are written to memory alone.
#include "platform/unwritten_files.h"
#include "tests/platform/drive_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace kiv {

namespace {

using testing::ElementsAre;

class UnwrittenFilesTest : public DriveTest {
  protected:
    UnwrittenFilesTest()
    {
        PutFolder("site");
        files->ChangeDirectory("C:\\site");
    }

    bool Exists(const std::string& name) const { return std::filesystem::exists(Native(name)); }

    std::vector<std::string> Listed(std::string_view folder, std::string_view pattern)
    {
        std::vector<std::string> names;
        for (const FileName& name : unwritten.List(folder, pattern).files)
            names.push_back(name.text);
        return names;
    }

    UnwrittenFiles unwritten{*files};
};

TEST_F(UnwrittenFilesTest, WhatIsWrittenIsReadBackAndTheDiskStays)
{
    Put("site/a.txt", "old");
    unwritten.WriteFile("A.txt", "new");
    EXPECT_EQ(unwritten.ReadFile("C:\\site\\a.txt"), "new");
    EXPECT_EQ(unwritten.ReadPart("a.txt", 1, 5), "ew");
    EXPECT_EQ(unwritten.ReadPart("a.txt", 7, 5), "");
    EXPECT_EQ(unwritten.Stamp("a.txt").size, 3U);
    EXPECT_EQ(Content("site/a.txt"), "old");
    ASSERT_NE(unwritten.Content("a.txt"), nullptr);
    EXPECT_EQ(*unwritten.Content("a.txt"), "new");
    EXPECT_THAT(unwritten.Written(), ElementsAre("C:\\site\\A.txt"));
}

TEST_F(UnwrittenFilesTest, AChangeIsOneBesideTheDisk)
{
    Put("site/a.txt", "old");
    Put("site/b.txt", "old");
    unwritten.WriteFile("A.txt", "new");
    unwritten.WriteFile("b.txt", "new");
    unwritten.WriteFile("b.txt", "old");
    unwritten.WriteFile("c.txt", "");
    unwritten.WriteFile("C.txt", "");
    std::vector<std::string> changed;
    std::set<std::size_t> places;
    for (const WrittenFile& file : unwritten.WrittenFiles()) {
        changed.push_back(file.path + (file.changed ? " changed" : ""));
        places.insert(file.place);
    }
    EXPECT_EQ(places.size(), 3U);
    EXPECT_THAT(changed, ElementsAre("C:\\site\\A.txt changed", "C:\\site\\b.txt",
                                     "C:\\site\\c.txt changed", "C:\\site\\C.txt changed"));
}

TEST_F(UnwrittenFilesTest, WhatIsNotWrittenIsTheDisks)
{
    Put("site/a.txt", "old");
    EXPECT_EQ(unwritten.ReadFile("a.txt"), "old");
    EXPECT_EQ(unwritten.Content("a.txt"), nullptr);
    EXPECT_TRUE(unwritten.FileExists("a.txt"));
    EXPECT_FALSE(unwritten.FileExists("b.txt"));
    EXPECT_THROW(unwritten.ReadFile("b.txt"), RunError);
    EXPECT_THROW(unwritten.WriteFile("no\\b.txt", "x"), RunError);
}

TEST_F(UnwrittenFilesTest, AddingBeginsWithWhatIsThere)
{
    Put("site/a.txt", "one ");
    unwritten.AppendToFile("a.txt", "two ");
    unwritten.AppendToFile("a.txt", "three");
    EXPECT_EQ(unwritten.ReadFile("a.txt"), "one two three");
    unwritten.AppendToFile("b.txt", "new");
    EXPECT_EQ(unwritten.ReadFile("b.txt"), "new");
    EXPECT_FALSE(Exists("site/b.txt"));
}

TEST_F(UnwrittenFilesTest, AFolderIsMadeInMemory)
{
    EXPECT_TRUE(unwritten.MakeFolder("asp"));
    EXPECT_TRUE(unwritten.FolderExists("C:\\SITE\\ASP"));
    EXPECT_FALSE(unwritten.MakeFolder("asp"));
    EXPECT_FALSE(unwritten.MakeFolder("no\\folder"));
    unwritten.WriteFile("asp\\a.asp", "page");
    EXPECT_EQ(unwritten.ReadFile("asp\\a.asp"), "page");
    EXPECT_THROW(unwritten.WriteFile("asp", "x"), RunError);
    EXPECT_THAT(unwritten.ListFolders("C:\\site"), ElementsAre("asp"));
    EXPECT_FALSE(Exists("site/asp"));
}

TEST_F(UnwrittenFilesTest, AFileThatIsDeletedIsGoneHereAlone)
{
    Put("site/a.txt", "old");
    EXPECT_TRUE(unwritten.DeleteFile("a.txt"));
    EXPECT_FALSE(unwritten.FileExists("a.txt"));
    EXPECT_FALSE(unwritten.Stamp("a.txt").exists);
    EXPECT_FALSE(unwritten.DeleteFile("a.txt"));
    EXPECT_TRUE(Exists("site/a.txt"));
}

TEST_F(UnwrittenFilesTest, AListingHasWhatIsThereAndWhatWasWritten)
{
    Put("site/b.txt", "b");
    Put("site/d.txt", "d");
    Put("site/e.htm", "e");
    unwritten.WriteFile("C.txt", "c");
    unwritten.WriteFile("B.TXT", "again");
    unwritten.DeleteFile("d.txt");
    EXPECT_THAT(Listed("C:\\site", "*.txt"), ElementsAre("B.TXT", "C.txt"));
    EXPECT_THAT(Listed("C:\\site", "*.*"), ElementsAre("B.TXT", "C.txt", "e.htm"));
}

TEST_F(UnwrittenFilesTest, NothingIsRenamed)
{
    Put("site/a.txt", "a");
    EXPECT_THROW(unwritten.RenameFile("a.txt", "b.txt"), RunError);
    EXPECT_THROW(unwritten.RenameExactly("a.txt", "b.txt"), RunError);
    EXPECT_TRUE(Exists("site/a.txt"));
}

} // namespace

} // namespace kiv
