// Two builds at once that add to the upload batch file.
#include "tests/builder/build_desk.h"
#include "tests/support/failing_files.h"

namespace kiv {
namespace {

/// Files to which another build of the same site adds each line just before this one does.
class SharedFiles : public test::FailingFiles {
  public:
    explicit SharedFiles(Files& files) : FailingFiles(files, -1) {}

    void AppendToFile(std::string_view path, std::string_view bytes) override
    {
        FailingFiles::AppendToFile(path, bytes);
        FailingFiles::AppendToFile(path, "other\r\n");
        FailingFiles::AppendToFile(path, bytes);
    }
};

BuildDesk& WithUploads(BuildDesk& desk, const std::string& list)
{
    desk.options.UploadListWanted = true;
    desk.options.UploadCommand = "send @@";
    desk.Put("site/_html.txt", list);
    return desk;
}

TEST(UploadList, LinesOfTwoBuildsAtOnceStandThereOnce)
{
    BuildDesk desk;
    WithUploads(desk, "@FILE = a\n@TITLE = A\n@FILE = b\n@TITLE = B\n");
    SharedFiles shared(*desk.files);
    EXPECT_EQ(desk.Build(shared), "");
    // Only this build's own lines are made single.
    EXPECT_EQ(desk.Content("guestout2.bat"), "send a.htm\r\nother\r\nsend b.htm\r\nother\r\n");
}

TEST(UploadList, TheyDoWhenTheBuildFailsAsWell)
{
    BuildDesk desk;
    WithUploads(desk, "@FILE = a\n@TITLE = A\n@FILE = b\n@TITLE = B\n!!pop[]\n");
    SharedFiles shared(*desk.files);
    EXPECT_EQ(desk.Build(shared), "subscript");
    EXPECT_EQ(desk.Content("guestout2.bat"), "send a.htm\r\nother\r\nsend b.htm\r\nother\r\n");
}

TEST(UploadList, AloneItIsOnlyAddedTo)
{
    BuildDesk desk;
    WithUploads(desk, "@FILE = a\n@TITLE = A\n");
    desk.Put("guestout2.bat", "by hand\nby hand\n");
    EXPECT_EQ(desk.Build(), "");
    EXPECT_EQ(desk.Content("guestout2.bat"), "by hand\nby hand\nsend a.htm\r\n");
    EXPECT_EQ(desk.files->Written().front(), "C:\\guestout2.bat");
}

} // namespace
} // namespace kiv
