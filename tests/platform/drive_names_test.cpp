// Names on the drive: found as written, then ignoring case, in their present state; listings.
#include "tests/platform/drive_test.h"

#include <gmock/gmock.h>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

using DriveNames = DriveTest;

TEST_F(DriveNames, AFileIsFoundIgnoringCase)
{
    Put("_HTML.txt", "upper");
    EXPECT_TRUE(files->FileExists("_html.txt"));
    EXPECT_TRUE(files->FileExists("c:/_Html.TXT"));
    EXPECT_EQ(files->ReadFile("_html.txt"), "upper");
}

TEST_F(DriveNames, LettersBeyondAsciiHaveCaseToo)
{
    Put("caf\xC3\xA9.txt", "e with accent");
    EXPECT_EQ(files->ReadFile("CAF\xC9.TXT"), "e with accent");
    EXPECT_FALSE(files->FileExists("CAFE.TXT"));
}

TEST_F(DriveNames, FoldersAreFoundIgnoringCase)
{
    PutFolder("Images/Small");
    Put("Images/Small/Cat.JPG", "cat");
    EXPECT_TRUE(files->FolderExists("images"));
    EXPECT_EQ(files->ReadFile("IMAGES\\SMALL\\cat.jpg"), "cat");
    files->ChangeDirectory("images/small");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\images\\small"); // spelled as given
    EXPECT_EQ(files->ReadFile("cat.jpg"), "cat");
    EXPECT_EQ(files->ReadFile("..\\small\\CAT.jpg"), "cat");
}

TEST_F(DriveNames, OnlyAPlainFileIsAFile)
{
    PutFolder("sub");
    Put("a.txt");
    EXPECT_TRUE(files->FileExists("a.txt"));
    const std::string long_name(256, 'n');
    const std::string_view with_nul("a.txt\0b", 7);
    for (const std::string_view name :
         {std::string_view("sub"), std::string_view(""), std::string_view("a.txt\\"),
          std::string_view("a.txt/"), std::string_view("*.txt"), std::string_view("a.txt "),
          std::string_view("a.txt\\b"), with_nul, std::string_view(long_name)}) {
        EXPECT_FALSE(files->FileExists(name)) << name;
        EXPECT_FALSE(files->Stamp(name).exists) << name;
        EXPECT_THAT(ErrorOf([&] { files->ReadFile(name); }), StartsWith("file: ")) << name;
    }
    EXPECT_TRUE(files->FolderExists("sub"));
    EXPECT_TRUE(files->FolderExists("sub\\"));
    EXPECT_FALSE(files->FolderExists("a.txt"));
    EXPECT_FALSE(files->FolderExists(with_nul));
}

TEST_F(DriveNames, WhateverBearsANameTakesIt)
{
    Put("File");
    PutFolder("Folder");
    for (const char* name : {"File", "file", "FOLDER", "folder\\"})
        EXPECT_TRUE(files->NameIsTaken(name)) << name;
    for (const char* name : {"nowhere", "X:\\File", "\\\\server\\File", "Folder\\File"})
        EXPECT_FALSE(files->NameIsTaken(name)) << name;
}

TEST_F(DriveNames, AServerOrAnUnmappedDriveIsNoPlace)
{
    for (const char* path : {"\\\\server\\share\\a.txt", "Q:\\a.txt"}) {
        EXPECT_FALSE(files->FileExists(path));
        EXPECT_FALSE(files->FolderExists(path));
        EXPECT_FALSE(files->MakeFolder(path));
        EXPECT_THAT(ErrorOf([&] { files->Open(path); }), StartsWith("file: ")) << path;
        EXPECT_THAT(ErrorOf([&] { files->ChangeDirectory(path); }), StartsWith("file: ")) << path;
        EXPECT_THAT(ErrorOf([&] { files->ListFiles(path, "*.*"); }), StartsWith("file: ")) << path;
        EXPECT_EQ(files->ToNative(path), "") << path;
    }
    EXPECT_EQ(files->CurrentDirectory(), "C:\\");
}

TEST_F(DriveNames, AMissingFileIsNamedInTheError)
{
    EXPECT_THAT(ErrorOf([&] { files->ReadFile("gone.txt"); }),
                testing::AllOf(StartsWith("file: "), HasSubstr("C:\\gone.txt")));
    EXPECT_THAT(ErrorOf([&] { files->ReadFile("no\\gone.txt"); }), HasSubstr("C:\\no\\gone.txt"));
}

TEST_F(DriveNames, AMissedNameIsFoundOnceThisProgramWroteIt)
{
    EXPECT_FALSE(files->FileExists("About.htm"));
    files->WriteFile("about.HTM", "1");
    EXPECT_TRUE(files->FileExists("About.htm"));
    files->WriteSource("Batch.bat", "2");
    EXPECT_EQ(files->ReadFile("BATCH.BAT"), "2");
    EXPECT_TRUE(files->MakeFolder("Sub"));
    EXPECT_TRUE(files->FolderExists("SUB"));
    files->WriteFile("sUB\\x.htm", "3");
    EXPECT_EQ(Content("Sub/x.htm"), "3");
    files->RenameFile("ABOUT.htm", "Index.htm");
    EXPECT_TRUE(files->FileExists("INDEX.htm"));
    EXPECT_FALSE(files->FileExists("ABOUT.htm"));
    files->DeleteFile("INDEX.HTM");
    EXPECT_FALSE(files->FileExists("index.htm"));
}

TEST_F(DriveNames, TheNameAsWrittenIsAlwaysInItsPresentState)
{
    EXPECT_FALSE(files->FileExists("a.txt"));
    Put("a.txt"); // by another program
    EXPECT_TRUE(files->FileExists("a.txt"));
    std::filesystem::remove(Native("a.txt"));
    EXPECT_FALSE(files->FileExists("a.txt"));
}

TEST_F(DriveNames, ARememberedNameThatIsGoneIsLookedUpAnew)
{
    Put("A.txt", "1");
    EXPECT_EQ(files->ReadFile("a.TXT"), "1");
    std::filesystem::rename(Native("A.txt"), Native("b.txt"));
    std::filesystem::rename(Native("b.txt"), Native("a.txt"));
    EXPECT_EQ(files->ReadFile("a.TXT"), "1");
    std::filesystem::remove(Native("a.txt"));
    EXPECT_FALSE(files->FileExists("a.TXT"));
}

TEST_F(DriveNames, ARememberedFolderThatIsGoneIsLookedUpAnew)
{
    PutFolder("Sub");
    Put("Sub/a.txt", "1");
    EXPECT_EQ(files->ReadFile("sub\\A.txt"), "1");
    std::filesystem::rename(Native("Sub"), Native("SUB"));
    EXPECT_EQ(files->ReadFile("sub\\A.txt"), "1");
    EXPECT_TRUE(files->FolderExists("sub"));
    std::filesystem::rename(Native("SUB"), Native("other"));
    EXPECT_FALSE(files->FolderExists("sub"));
    EXPECT_THAT(ErrorOf([&] { files->Open("sub\\new.txt"); }), HasSubstr("no such folder"));
}

TEST_F(DriveNames, AFolderThatMovesBetweenOpenAndCommitIsFound)
{
    PutFolder("Sub");
    const OutputFile file = files->Open("sub\\a.htm");
    std::filesystem::rename(Native("Sub"), Native("SUB"));
    files->Commit(file, "1");
    EXPECT_EQ(Content("SUB/a.htm"), "1");
}

TEST_F(DriveNames, RefreshForgets)
{
    EXPECT_FALSE(files->FileExists("a.TXT"));
    files->WriteFile("b.txt", "1");
    Put("a.txt");
    files->Refresh();
    EXPECT_TRUE(files->FileExists("a.TXT"));
    EXPECT_THAT(files->Written(), IsEmpty());
}

TEST_F(DriveNames, NamesOutsideTheCodePageAreFoundByTheirReferences)
{
    PutFolder("\xE4\xB8\xAD"); // U+4E2D
    Put("\xE4\xB8\xAD/\xE4\xB8\xAD.jpg", "1");
    EXPECT_THAT(files->ListFolders("C:\\"), ElementsAre("&#20013;"));
    EXPECT_TRUE(files->FolderExists("&#20013;"));
    EXPECT_THAT(files->ListFiles("&#20013;", "*.*"), ElementsAre("&#20013;.jpg"));
    EXPECT_EQ(files->ReadFile("&#20013;\\&#20013;.JPG"), "1");
    EXPECT_EQ(files->ToNative("&#20013;\\&#20013;.jpg"), Below("\xE4\xB8\xAD/\xE4\xB8\xAD.jpg"));
    files->WriteFile("&#20013;\\&#20013;.jpg", "2");
    EXPECT_EQ(Content("\xE4\xB8\xAD/\xE4\xB8\xAD.jpg"), "2");
    files->RenameFile("&#20013;\\&#20013;.jpg", "&#20013;\\a.jpg");
    EXPECT_EQ(Content("\xE4\xB8\xAD/a.jpg"), "2");
}

TEST_F(DriveNames, ALongNameOutsideTheCodePageIsFoundThoughItsReferencesAreTooLong)
{
    std::string native; // 240 bytes
    std::string text;   // 640
    for (int i = 0; i < 80; ++i) {
        native += "\xE4\xB8\xAD";
        text += "&#20013;";
    }
    Put(native, "1");
    EXPECT_TRUE(files->FileExists(text));
    EXPECT_EQ(files->ReadFile(text), "1");
    files->WriteFile(text, "2");
    EXPECT_EQ(Content(native), "2");
    EXPECT_THAT(ErrorOf([&] { files->WriteFile(text + "x", "3"); }),
                testing::HasSubstr("too long"));
    files->DeleteFile(text);
    EXPECT_FALSE(files->FileExists(text));
}

TEST_F(DriveNames, ListingsHaveTheirOrderAndLeaveNothingOut)
{
    for (const char* name : {"cat_t.jpg", "cats.jpg", "cat.jpg", "cat-2.jpg", ".hidden", "readme",
                             "b.HTML", "\xC3\xA9.txt"})
        Put(name);
    PutFolder("Sub");
    PutFolder("another.htm");
    // The bytes of the upper-cased names decide: "S" is before "_", "-" before ".".
    EXPECT_THAT(files->ListFiles("C:\\", "*.*"),
                ElementsAre(".hidden", "b.HTML", "cat-2.jpg", "cat.jpg", "cats.jpg", "cat_t.jpg",
                            "readme", "\xE9.txt"));
    EXPECT_THAT(files->ListFiles(".", "*.htm*"), ElementsAre("b.HTML"));
    EXPECT_THAT(files->ListFiles(".", "*.jpg"),
                ElementsAre("cat-2.jpg", "cat.jpg", "cats.jpg", "cat_t.jpg"));
    EXPECT_THAT(files->ListFiles("SUB", "*.*"), IsEmpty());
    EXPECT_THAT(files->ListFolders("."), ElementsAre("another.htm", "Sub"));
    EXPECT_THAT(ErrorOf([&] { files->ListFiles("gone", "*.*"); }), StartsWith("file: "));
}

TEST_F(DriveNames, AListingIsFreshAndItsNamesAreFound)
{
    EXPECT_FALSE(files->FileExists("NEW.txt"));
    Put("new.txt"); // by another program
    EXPECT_THAT(files->ListFiles(".", "*.*"), ElementsAre("new.txt"));
    EXPECT_TRUE(files->FileExists("NEW.txt"));
}

TEST_F(DriveNames, AFolderIsMadeOnlyUnderAFreeName)
{
    Put("a.txt");
    EXPECT_TRUE(files->MakeFolder("new"));
    EXPECT_TRUE(std::filesystem::is_directory(Native("new")));
    EXPECT_FALSE(files->MakeFolder("new"));
    EXPECT_FALSE(files->MakeFolder("NEW"));
    EXPECT_FALSE(files->MakeFolder("A.TXT"));
    EXPECT_FALSE(files->MakeFolder("no\\new"));
    EXPECT_FALSE(files->MakeFolder("C:\\"));
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "new"}));
}

TEST_F(DriveNames, APartOfAFile)
{
    Put("a.txt", "0123456789");
    EXPECT_EQ(files->ReadPart("A.txt", 2, 3), "234");
    EXPECT_EQ(files->ReadPart("a.txt", 8, 100), "89");
    EXPECT_EQ(files->ReadPart("a.txt", 10, 1), "");
    EXPECT_EQ(files->ReadPart("a.txt", 1000, 1), "");
}

TEST_F(DriveNames, AStampTellsOneStateFromAnother)
{
    EXPECT_EQ(files->Stamp("a.txt"), FileStamp{});
    files->WriteFile("a.txt", "1111");
    const FileStamp first = files->Stamp("A.txt");
    EXPECT_TRUE(first.exists);
    EXPECT_EQ(first.size, 4U);
    // The same size, and surely within one tick of the file system's clock.
    files->WriteFile("a.txt", "2222");
    EXPECT_NE(files->Stamp("a.txt"), first);
}

} // namespace
} // namespace kiv
