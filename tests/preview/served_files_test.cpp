// From a target to a file of the site, and to nothing else.
#include "preview/served_files.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <thread>

namespace kiv {
namespace {

using test::TextOf;

class FilesServed : public testing::Test {
  protected:
    FilesServed()
    {
        for (const char* const name :
             {"site/a.htm", "site/a b.htm", "site/%2e%2e", "site/index.htm", "site/.htaccess",
              "site/.well-known/x.txt", "site/sub/index.html", "site/sub/Photo.JPG",
              "site/sub/photos.gif", "site/pictures/x.gif", "outside/secret.txt",
              "site-too/secret.txt"})
            test::WriteBytes(folder_.Path() / name, name);
        root_ = TextOf(folder_.Path() / "site");
    }

    /// "file sub/index.html", "folder pictures", "to-folder sub", "missing x -> y (case)".
    std::string Found(std::string_view target) const
    {
        const std::optional<TargetPath> path = ReadTarget(target);
        if (!path)
            return "refused";
        const Served served = ServedFiles(root_).Find(*path);
        const std::string names = SitePath(served.names);
        switch (served.kind) {
        case Served::Kind::file:
            return "file " + names;
        case Served::Kind::folder:
            return "folder " + names;
        case Served::Kind::to_folder:
            return "to-folder " + names;
        case Served::Kind::missing:
        case Served::Kind::unreadable:
            break;
        }
        std::string found = "missing";
        if (!served.nearest.empty())
            found += " -> " + SitePath(served.nearest) + (served.nearest_is_folder ? "/" : "");
        return found + (served.differs_in_case ? " (case)" : "");
    }

    test::TemporaryFolder folder_;
    std::string root_;
};

TEST_F(FilesServed, FilesAndFolders)
{
    EXPECT_EQ(Found("/a.htm"), "file /a.htm");
    EXPECT_EQ(Found("/a%20b.htm?x"), "file /a b.htm");
    EXPECT_EQ(Found("/"), "file /index.htm");
    EXPECT_EQ(Found("/sub/"), "file /sub/index.html");
    EXPECT_EQ(Found("/sub"), "to-folder /sub");
    EXPECT_EQ(Found("/pictures/"), "folder /pictures");
}

TEST_F(FilesServed, AFolderWithoutIndexTellsWhatIsInIt)
{
    const Served served = ServedFiles(root_).Find({{"pictures"}, true});
    EXPECT_THAT(served.entries, testing::ElementsAre(NativeEntry{"x.gif", false}));
}

TEST_F(FilesServed, AFileIsNoFolder)
{
    EXPECT_EQ(Found("/a.htm/"), "missing");
    EXPECT_EQ(Found("/a.htm/b"), "missing");
}

TEST_F(FilesServed, NamesThatNoListingHasLeadNowhere)
{
    for (const std::string_view target :
         {"//a.htm", "/sub//Photo.JPG", "/C:/a.htm", "/c:", "/a.htm::$DATA", "/a.htm.", "/a.htm%20",
          "/CON", "/NUL", "/COM1", "/AUX.htm", "/sub/CON", "/~", "/A%20B~1.HTM"})
        EXPECT_THAT(Found(target), testing::StartsWith("missing")) << target;
    EXPECT_EQ(Found("/etc/passwd"), "missing");
}

TEST_F(FilesServed, ANameIsNotDecodedTwice)
{
    EXPECT_EQ(Found("/%252e%252e"), "file /%2e%2e"); // there is a file of this name
    EXPECT_EQ(Found("/%252e%252e/outside/secret.txt"), "missing");
}

TEST_F(FilesServed, DotNamesAreNotThere)
{
    EXPECT_EQ(Found("/.htaccess"), "missing");
    EXPECT_EQ(Found("/.well-known/x.txt"), "file /.well-known/x.txt");
    test::WriteBytes(folder_.Path() / "site/bare/.git/config", "x");
    const Served served = ServedFiles(root_).Find({{"bare"}, true});
    EXPECT_THAT(served.entries, testing::IsEmpty());
}

TEST_F(FilesServed, TheNearestNameOfWhatIsMissing)
{
    EXPECT_EQ(Found("/A.htm"), "missing -> /a.htm (case)");
    EXPECT_EQ(Found("/Sub/photo.jpg"), "missing -> /sub/Photo.JPG (case)");
    EXPECT_EQ(Found("/SUB/"), "missing -> /sub/ (case)");
    EXPECT_EQ(Found("/sub/photoes.gif"), "missing -> /sub/photos.gif");
    EXPECT_EQ(Found("/picturs/x.gif"), "missing -> /pictures/x.gif");
    EXPECT_EQ(Found("/picturs/X.gif"), "missing -> /pictures/x.gif");
    EXPECT_EQ(Found("/nothing-like-it.pdf"), "missing");
}

#ifndef _WIN32
TEST_F(FilesServed, LinksLeadOnAsLongAsTheyStayInside)
{
    namespace fs = std::filesystem;
    const fs::path site = folder_.Path() / "site";
    fs::create_symlink(site / "a.htm", site / "inside.htm");
    fs::create_symlink("sub", site / "sub-link");
    fs::create_symlink(folder_.Path() / "outside", site / "out");
    fs::create_symlink("../outside/secret.txt", site / "out.txt");
    fs::create_symlink("../site-too", site / "too"); // its path begins as the root's does
    fs::create_symlink("..", site / "up");
    fs::create_symlink("loop", site / "loop");
    fs::create_symlink(site, folder_.Path() / "outside/back");
    EXPECT_EQ(Found("/inside.htm"), "file /inside.htm");
    EXPECT_EQ(Found("/sub-link/Photo.JPG"), "file /sub-link/Photo.JPG");
    for (const std::string_view target :
         {"/out", "/out/", "/out/secret.txt", "/out/secre.txt", "/out/back/a.htm", "/out.txt",
          "/too/", "/too/secret.txt", "/up/", "/up/outside/secret.txt", "/loop", "/loop/"})
        EXPECT_EQ(Found(target), "missing") << target;
}

TEST_F(FilesServed, WhatIsSwappedForALinkThatLeadsOutIsNotOpened)
{
    namespace fs = std::filesystem;
    const fs::path site = folder_.Path() / "site";
    const ServedFiles files(root_);
    const Served page = files.Find({{"a.htm"}, false});
    const Served picture = files.Find({{"pictures", "x.gif"}, false});
    NativeFault fault = NativeFault::none;
    ASSERT_NE(files.Open(page, fault), nullptr);
    ASSERT_NE(files.Open(picture, fault), nullptr);
    EXPECT_EQ(files.Open(picture, fault)->Read(0, 99), "site/pictures/x.gif");
    test::WriteBytes(folder_.Path() / "outside/x.gif", "x");
    fs::remove(site / "a.htm");
    fs::create_symlink("../outside/secret.txt", site / "a.htm");
    fs::rename(site / "pictures", site / "images");
    fs::create_symlink(folder_.Path() / "outside", site / "pictures");
    EXPECT_EQ(files.Open(page, fault), nullptr);
    EXPECT_EQ(files.Open(picture, fault), nullptr);
    fs::remove(site / "pictures");
    fs::create_symlink("images", site / "pictures");
    ASSERT_NE(files.Open(picture, fault), nullptr);
    EXPECT_EQ(files.Open(picture, fault)->Size(), 19U);
}

TEST_F(FilesServed, AFileIsOpenedInTheRootHoweverOftenLinksChange)
{
    namespace fs = std::filesystem;
    const fs::path site = folder_.Path() / "site";
    test::WriteBytes(site / "pictures/secret.txt", "open");
    fs::create_directory_symlink(folder_.Path() / "outside", site / "out");
    fs::create_directory_symlink("pictures", site / "in");
    const std::string real_root = RealNativePath(root_);
    std::atomic<bool> is_over = false;
    std::thread swapper([&] {
        while (!is_over) {
            fs::copy_symlink(site / "in", site / "next");
            fs::rename(site / "next", site / "swapped");
            fs::copy_symlink(site / "out", site / "next");
            fs::rename(site / "next", site / "swapped");
        }
    });
    int opened = 0;
    NativeFault fault = NativeFault::none;
    for (int i = 0; i < 3000; ++i)
        if (const auto file =
                OpenNativeFileIn(TextOf(site / "swapped/secret.txt"), real_root, fault)) {
            ++opened;
            EXPECT_EQ(file->Read(0, 99), "open");
        }
    is_over = true;
    swapper.join();
    EXPECT_GT(opened, 0);
}

TEST_F(FilesServed, OfARootThatIsNotThereNothingIs)
{
    root_ = TextOf(folder_.Path() / "later");
    const ServedFiles files(root_);
    test::WriteBytes(folder_.Path() / "later/a.htm", "x");
    EXPECT_EQ(files.Find({{"a.htm"}, false}).kind, Served::Kind::missing);
}

TEST_F(FilesServed, AnIndexThatLeadsOutIsNone)
{
    namespace fs = std::filesystem;
    fs::create_symlink(folder_.Path() / "outside/secret.txt",
                       folder_.Path() / "site/pictures/index.htm");
    EXPECT_EQ(Found("/pictures/"), "folder /pictures");
}

TEST_F(FilesServed, TheRootItselfMayBeALink)
{
    namespace fs = std::filesystem;
    fs::create_symlink(folder_.Path() / "site", folder_.Path() / "link");
    root_ = TextOf(folder_.Path() / "link");
    EXPECT_EQ(Found("/sub/Photo.JPG"), "file /sub/Photo.JPG");
}
#endif

} // namespace
} // namespace kiv
