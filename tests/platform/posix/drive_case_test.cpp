// Names that differ in case alone: only where the native system tells them apart.
#include "tests/platform/drive_test.h"

#include <gmock/gmock.h>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using DriveCase = DriveTest;

TEST_F(DriveCase, TheNameAsWrittenComesFirst)
{
    Put("a.txt", "small");
    Put("A.TXT", "large");
    EXPECT_EQ(files->ReadFile("a.txt"), "small");
    EXPECT_EQ(files->ReadFile("A.TXT"), "large");
    EXPECT_EQ(files->ReadFile("A.txt"), "large"); // then the first in byte order
}

TEST_F(DriveCase, ThreeFilesThatDifferInCaseStayApart)
{
    Put("a.txt", "1");
    Put("A.TXT", "2");
    EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.txt", "A.txt"); }), HasSubstr("target exists"));
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "A.TXT"}));
}

TEST_F(DriveCase, ListingsHaveThemInByteOrder)
{
    for (const char* name : {"cats.jpg", "cat.jpg", "CAT.JPG"})
        Put(name);
    EXPECT_THAT(files->ListFiles("C:\\", "*.jpg"), ElementsAre("CAT.JPG", "cat.jpg", "cats.jpg"));
}

TEST_F(DriveCase, NamesOutsideTheCodePageAreToldApartToo)
{
    Put("\xE4\xB8\xAD.jpg", "small"); // U+4E2D
    Put("\xE4\xB8\xAD.JPG", "large");
    Put("\xFF.txt", "raw"); // no UTF-8: the byte stands for itself
    EXPECT_THAT(files->ListFiles("C:\\", "*.*"),
                ElementsAre("&#20013;.JPG", "&#20013;.jpg", "\xFF.txt"));
    EXPECT_EQ(files->ReadFile("&#20013;.jpg"), "small");
    EXPECT_EQ(files->ReadFile("&#20013;.JPG"), "large");
    EXPECT_EQ(files->ReadFile("\xFF.txt"), "raw");
}

TEST_F(DriveCase, ANameThatWindowsForbidsIsAllowed)
{
    files->WriteFile("what*is?it", "1");
    EXPECT_EQ(NamesIn(), Names{"what*is?it"});
    EXPECT_EQ(Content("what*is?it"), "1");
}

TEST_F(DriveCase, BytesThatAreNoUtf8ComeBack)
{
    Put("caf\xE9.txt", "stray");
    Put("caf\xC3\xA9.txt", "accent");
    files->RenameFile("caf&#1114345;.txt", "a.txt"); // 1114345 is 0x110000 and E9
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "caf\xC3\xA9.txt"}));
    EXPECT_EQ(Content("a.txt"), "stray");
    files->RenameFile("caf\xE9.txt", "b.txt");
    files->RenameExactly("a.txt", "caf&#1114345;.txt");
    EXPECT_EQ(NamesIn(), (Names{"b.txt", "caf\xE9.txt"}));
}

TEST_F(DriveCase, AnOldNameComesBackBesideOneInOtherCase)
{
    Put("A", "large");
    Put("b", "small");
    EXPECT_NE(ErrorOf([&] { files->RenameFile("b", "a"); }), "");
    files->RenameExactly("b", "a");
    EXPECT_EQ(Content("a"), "small");
    EXPECT_EQ(Content("A"), "large");
}

TEST_F(DriveCase, EachSpellingIsAFolderOfItsOwn)
{
    PutFolder("Sub");
    PutFolder("sub");
    PutFolder("caf\xE9");
    PutFolder("caf\xC3\xA9");
    EXPECT_NE(files->RealFolder("Sub"), files->RealFolder("sub"));
    EXPECT_TRUE(files->RealFolder("Sub").ends_with("/Sub"));
    EXPECT_TRUE(files->RealFolder("caf\xE9").ends_with("/caf\xE9")); // the accent, not the byte
    std::filesystem::create_directory_symlink(Native("sub"), Native("link"));
    EXPECT_EQ(files->RealFolder("link"), files->RealFolder("sub"));
}

TEST_F(DriveCase, ANameWithABackslashIsLeftOut)
{
    Put("a\\b.txt");
    Put("a\\b.htm");
    Put("c.txt");
    PutFolder("d\\e");
    PutFolder("f");
    const FolderListing listing = files->List(".", "*.txt");
    ASSERT_EQ(listing.files.size(), 1U);
    EXPECT_EQ(listing.files[0], (FileName{"c.txt", "c.txt"}));
    EXPECT_THAT(listing.left_out, testing::ElementsAre("a\\b.txt"));
    EXPECT_THAT(files->ListFolders("."), testing::ElementsAre("f"));
}

} // namespace
} // namespace kiv
