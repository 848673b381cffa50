// What the directory window shows.
#include "shell/folder_view.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FolderViews : public ShellTest {};

TEST_F(FolderViews, FolderWithAllAboveAndInside)
{
    Put("site/txt/a.txt");
    Put("site/images/b.gif");
    Put("site/_html.txt");
    Put("site/Zebra.htm");
    const FolderView view = ViewFolder(machine, "C:\\site\\");
    EXPECT_EQ(view.folder, "C:\\site");
    EXPECT_EQ(view.drives, "CZ");                                    // Z: is the whole machine
    EXPECT_THAT(view.above, ElementsAre(FolderEntry{"C:\\", "C:\\"}, // the root's name is its path
                                        FolderEntry{"site", "C:\\site"}));
    EXPECT_THAT(view.inside, ElementsAre(FolderEntry{"images", "C:\\site\\images"},
                                         FolderEntry{"txt", "C:\\site\\txt"}));
    EXPECT_THAT(FilesOf(machine, view.folder),
                ElementsAre("Zebra.htm", "_html.txt")); // "Z" before "_"
}

TEST_F(FolderViews, Root)
{
    const FolderView view = ViewFolder(machine, "C:\\");
    EXPECT_EQ(view.folder, "C:\\");
    EXPECT_THAT(view.above, ElementsAre(FolderEntry{"C:\\", "C:\\"}));
    EXPECT_THAT(view.inside, ElementsAre(FolderEntry{"site", "C:\\site"}, // one "\" alone
                                         FolderEntry{"utils", "C:\\utils"}));
    EXPECT_THAT(FilesOf(machine, "C:\\"), IsEmpty());
    EXPECT_THAT(FilesOf(machine, "C:\\gone"), IsEmpty());
}

TEST_F(FolderViews, RootOfTheCurrentDrive)
{
    EXPECT_EQ(ViewFolder(machine, "\\").folder, "C:\\");
}

TEST_F(FolderViews, NoSuchFolder)
{
    Put("site/a.txt");
    for (const char* const path : {"C:\\gone", "D:\\", "\\\\server\\share", "C:\\site\\a.txt"})
        EXPECT_EQ(KindOf([&] { ViewFolder(machine, path); }), "file") << path;
}

} // namespace
} // namespace kiv
