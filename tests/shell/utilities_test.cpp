// The utilities, as they are called for the workspace.
#include "shell/utilities.h"
#include "shell_desk.h"
#include "utilities/conversions.h"

namespace kiv {
namespace {

using testing::IsEmpty;

class UtilityCalls : public ShellTest {
  protected:
    UtilityCalls()
    {
        workspace.EditorCommand = "pad ";
        workspace.switchto("C:\\site");
    }
};

TEST_F(UtilityCalls, GrabbingTitles)
{
    Put("site/A.htm", "<title>One</title>\r\n<body>\r\ntext\r\n</body>\r\n");
    GrabTitles(workspace, {});
    EXPECT_EQ(Content("site/grabtitles.txt"), "@file = a.htm\r\n@title = One\r\n\r\n");
    EXPECT_EQ(reporter.status, "Grab titles done");
    GrabTitles(workspace, {.redirect = true});
    EXPECT_EQ(Content("site/grabtitles.txt"),
              "@file = a.htm\r\n@title = One\r\n@redirect|..\\a.htm\r\n\r\n");
    EXPECT_EQ(reporter.status, "Grab titles && redirect done");
    GrabTitles(workspace, {.trimmed = true});
    EXPECT_EQ(Content("site/grabtitles.txt"),
              "@file = a.htm\r\n@title = One\r\ntext\r\n</body>\r\n\r\n");
}

TEST_F(UtilityCalls, WhatWasChosenStaysUntilTheNextWrite)
{
    GrabTitles(workspace, {.all = true});
    EXPECT_EQ(reporter.shown, (Texts{"Empty directory!"}));
    EXPECT_EQ(reporter.status, "");
    Put("site/a.htm", "x");
    GrabTitles(workspace, {});
    EXPECT_EQ(Content("site/grabtitles.txt"), "@file = a.htm\r\n@title = Untitled\r\nx\r\n\r\n");
    GrabTitles(workspace, {});
    EXPECT_EQ(Content("site/grabtitles.txt"), "@file = a.htm\r\n@title = Untitled\r\n\r\n");
}

TEST_F(UtilityCalls, PicturesOfAFolder)
{
    EXPECT_EQ(KindOf([&] { SizePictures(workspace, "images"); }), "");
    EXPECT_EQ(reporter.shown, (Texts{"There is no Images subdirectory. Aborting"}));
    Put("site/images/a.gif", std::string("GIF89a\x08\0\x06\0", 10) + std::string(8, '\0'));
    EXPECT_EQ(KindOf([&] { SizePictures(workspace, "images"); }), "");
    EXPECT_EQ(reporter.status, "sizer done. piclist.txt created.");
    EXPECT_EQ(programs.started, (Texts{"pad _alt.txt", "pad _piclist.txt"}));
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site");
    workspace.EditorCommand = "pad +%l %f ";
    programs.started.clear();
    EXPECT_EQ(KindOf([&] { SizePictures(workspace, "images"); }), "");
    EXPECT_EQ(programs.started, (Texts{"pad +1 _alt.txt", "pad +1 _piclist.txt"}));
    EXPECT_TRUE(Exists("site/images/_pichtml.txt"));
    Put("site/images/b.jpg", "no picture");
    EXPECT_EQ(KindOf([&] { SizePictures(workspace, "images"); }), "picture");
    EXPECT_EQ(reporter.status, "b.jpg");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\site"); // back, though it failed
}

TEST_F(UtilityCalls, ClosingParagraphs)
{
    clipboard.SetText("one<p>\r\ntwo<P>\r\n<p>three\r\n<p>\r\np>\nfour<p>");
    CloseParagraphs(workspace);
    EXPECT_EQ(clipboard.Text(), "one</p>\r\ntwo</p>\r\n<p>three\r\n</p>\r\np>\nfour</p>");
    clipboard.SetText("");
    CloseParagraphs(workspace);
    EXPECT_EQ(clipboard.Text(), "");
    EXPECT_THAT(files->Written(), IsEmpty());
}

TEST_F(UtilityCalls, ConversionsUseTheUsersAddress)
{
    ConversionWindow window;
    SetMode(window, "getnames");
    clipboard.SetText("<input name=\"a\">");
    ConvertClipboard(workspace, window);
    EXPECT_THAT(clipboard.Text(), testing::HasSubstr("email|webmaster@example.com|messageout"));
    Put("utils/kivaddr.ini", "recipient|me@example.org\n");
    SetMode(window, "getnames");
    const std::optional<std::string> script = ConvertText(workspace, window, "<input name=\"a\">");
    ASSERT_TRUE(script);
    EXPECT_THAT(*script, testing::HasSubstr("email|me@example.org|messageout"));
}

TEST_F(UtilityCalls, NewsMakesItsSiteTheWorkingDirectory)
{
    Put("temp/_html.txt", ";inserthere1\r\n;inserthere2\r\n");
    Put("temp/_group.txt", "");
    Put("guestout2.bat", "old");
    NewsItem item;
    item.site = 1;
    item.file_name = "pr030504";
    item.title = "T";
    item.text = "words";
    EXPECT_TRUE(WriteNews(workspace, item, ReadNewsSettings(*files)));
    EXPECT_EQ(workspace.WorkDir, "C:\\temp\\");
    EXPECT_TRUE(workspace.IsGroup);
    EXPECT_FALSE(Exists("guestout2.bat"));
    EXPECT_TRUE(Exists("temp/txt/pr030504.txt"));
    item.site = 2;
    EXPECT_FALSE(WriteNews(workspace, item, ReadNewsSettings(*files)));
    EXPECT_EQ(reporter.shown, (Texts{"Choose a Website"}));
}

} // namespace
} // namespace kiv
