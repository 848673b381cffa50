// Deleting and renaming: nothing ever lands on a name that is taken.
#include "tests/platform/drive_test.h"

#include <gmock/gmock.h>

namespace kiv {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

using DriveRenames = DriveTest;

TEST_F(DriveRenames, AFileTakesTheNameAsWritten)
{
    Put("A B.txt", "1");
    files->RenameFile("a b.TXT", "a-b.txt");
    EXPECT_EQ(NamesIn(), (Names{"a-b.txt"}));
    EXPECT_EQ(Content("a-b.txt"), "1");
}

TEST_F(DriveRenames, CharactersOutsideTheCodePageStay)
{
    Put("\xE4\xB8\xAD.jpg", "1"); // U+4E2D
    files->RenameFile("&#20013;.jpg", "&#20013;_t.jpg");
    EXPECT_EQ(NamesIn(), (Names{"\xE4\xB8\xAD_t.jpg"}));
    files->RenameFile("&#20013;_t.jpg", "&#20013;.JPG");
    EXPECT_EQ(NamesIn(), (Names{"\xE4\xB8\xAD.JPG"}));
    Put("&#20013;.gif", "2"); // this name itself is free, but not its text
    Put("\xE4\xB8\xAD.png", "3");
    files->Refresh();
    EXPECT_THAT(ErrorOf([&] { files->RenameFile("&#20013;.png", "&#20013;.gif"); }),
                HasSubstr("target exists"));
    EXPECT_EQ(Content("&#20013;.gif"), "2");
}

TEST_F(DriveRenames, ARenameTellsBothNamesExactly)
{
    Put("&#20013; 1.jpg", "text");
    Put("\xE4\xB8\xAD 1.jpg", "character");
    const NameChange character = files->RenameFile("&#20013; 1.jpg", "a.jpg");
    EXPECT_EQ(character.from, "&#20013; 1.jpg");
    EXPECT_EQ(character.to, "a.jpg");
    EXPECT_EQ(Content("a.jpg"), "character");
    const NameChange text = files->RenameFile("&#38;#20013; 1.jpg", "&#20013;.jpg");
    EXPECT_EQ(text.from, "&#38;#20013; 1.jpg");
    EXPECT_EQ(text.to, "&#38;#20013;.jpg");
    EXPECT_EQ(NamesIn(), (Names{"&#20013;.jpg", "a.jpg"}));
}

TEST_F(DriveRenames, AnExactNameIsGivenToTheLetter)
{
    Put("a.jpg", "1");
    files->RenameExactly("a.jpg", "&#20013;.jpg");
    EXPECT_EQ(NamesIn(), (Names{"\xE4\xB8\xAD.jpg"}));
    files->RenameExactly("&#20013;.jpg", "&#38;#20013;.JPG");
    EXPECT_EQ(NamesIn(), (Names{"&#20013;.JPG"}));
    Put("b.jpg", "2");
    EXPECT_THAT(ErrorOf([&] { files->RenameExactly("b.jpg", "&#38;#20013;.JPG"); }),
                HasSubstr("target exists"));
    EXPECT_EQ(Content("b.jpg"), "2");
}

TEST_F(DriveRenames, AFolderIsItselfHoweverItIsReached)
{
    PutFolder("Sub");
    PutFolder("Sub2");
    const std::string real = files->RealFolder("Sub");
    EXPECT_TRUE(real.ends_with("Sub"));
    files->ChangeDirectory("SUB");
    for (const char* path : {"C:\\Sub", "c:\\sUB\\", ".", "..\\SUB"})
        EXPECT_EQ(files->RealFolder(path), real) << path;
    EXPECT_NE(files->RealFolder("C:\\Sub2"), real);
    EXPECT_THAT(ErrorOf([&] { files->RealFolder("C:\\no"); }), StartsWith("file: "));
}

TEST_F(DriveRenames, ATakenNameIsNeverOverwritten)
{
    Put("a b.txt", "1");
    for (const char* taken : {"a-b.txt", "A-B.TXT"}) {
        Put(taken, "2");
        files->Refresh();
        EXPECT_THAT(ErrorOf([&] { files->RenameFile("a b.txt", "a-b.txt"); }),
                    AllOf(StartsWith("file: "), HasSubstr("target exists"), HasSubstr("a-b.txt")))
            << taken;
        EXPECT_EQ(NamesIn(), (Names{"a b.txt", taken}));
        EXPECT_EQ(Content(taken), "2");
        std::filesystem::remove(Native(taken));
    }
}

TEST_F(DriveRenames, AFolderTakesANameToo)
{
    Put("a.txt", "1");
    PutFolder("Sub");
    for (const char* taken : {"Sub", "sub"})
        EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.txt", taken); }), HasSubstr("target exists"))
            << taken;
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "Sub"}));
}

TEST_F(DriveRenames, ANameTakenByAnotherProgramMeanwhileIsSeen)
{
    Put("a.txt", "1");
    EXPECT_FALSE(files->FileExists("b.txt")); // the folder is remembered without it
    Put("b.txt", "2");
    EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.txt", "b.txt"); }), HasSubstr("target exists"));
    EXPECT_EQ(Content("b.txt"), "2");
}

TEST_F(DriveRenames, ANameFreedByAnotherProgramIsFree)
{
    Put("a.txt", "1");
    Put("B.txt", "2");
    EXPECT_TRUE(files->FileExists("b.txt"));
    std::filesystem::remove(Native("B.txt"));
    files->RenameFile("a.txt", "b.txt");
    EXPECT_EQ(NamesIn(), (Names{"b.txt"}));
}

TEST_F(DriveRenames, TheCaseOfAFilesOwnNameMayChange)
{
    Put("PHOTO.JPG", "1");
    files->RenameFile("PHOTO.JPG", "photo.jpg");
    EXPECT_EQ(NamesIn(), (Names{"photo.jpg"}));
    files->RenameFile("PHOTO.jpg", "Photo.jpg");
    EXPECT_EQ(NamesIn(), (Names{"Photo.jpg"}));
    EXPECT_EQ(Content("Photo.jpg"), "1");
}

TEST_F(DriveRenames, TheSameNameStays)
{
    Put("a.txt", "1");
    files->RenameFile("a.txt", "a.txt");
    files->RenameFile("a.txt", "C:\\.\\a.txt");
    EXPECT_EQ(NamesIn(), (Names{"a.txt"}));
}

TEST_F(DriveRenames, WhatCannotBeANameIsRefused)
{
    Put("a.txt", "1");
    PutFolder("sub");
    for (const std::string& name : {std::string(), std::string("."), std::string(".."),
                                    std::string("b\\"), std::string("no\\b"), std::string(256, 'b'),
                                    std::string("b\0c", 3), std::string("\\\\server\\b")})
        EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.txt", name); }), StartsWith("file: "))
            << name;
    EXPECT_THAT(ErrorOf([&] { files->RenameFile("gone.txt", "b.txt"); }), StartsWith("file: "));
    EXPECT_THAT(ErrorOf([&] { files->RenameFile("sub", "b"); }), StartsWith("file: "));
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "sub"}));
}

TEST_F(DriveRenames, ManyRenamesInOneFolder)
{
    for (int i = 0; i < 300; ++i)
        Put("a " + std::to_string(i) + ".txt");
    for (int i = 0; i < 300; ++i)
        files->RenameFile("a " + std::to_string(i) + ".txt", "a-" + std::to_string(i) + ".txt");
    EXPECT_EQ(files->ListFiles(".", "a-*.txt").size(), 300U);
    EXPECT_TRUE(files->FileExists("A-299.TXT"));
    EXPECT_FALSE(files->FileExists("A 299.TXT"));
}

TEST_F(DriveRenames, DeletingTakesAPlainFile)
{
    Put("A.bat");
    PutFolder("sub");
    EXPECT_TRUE(files->DeleteFile("a.BAT"));
    EXPECT_EQ(NamesIn(), (Names{"sub"}));
    EXPECT_FALSE(files->DeleteFile("a.bat"));   // somebody else may have been quicker
    ErrorOf([&] { files->DeleteFile("*.*"); }); // no name on Windows, that of no file elsewhere
    for (const char* name : {"sub", ""})
        EXPECT_THAT(ErrorOf([&] { files->DeleteFile(name); }), StartsWith("file: ")) << name;
    EXPECT_EQ(NamesIn(), (Names{"sub"}));
}

} // namespace
} // namespace kiv
