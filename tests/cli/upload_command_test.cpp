// Uploads by programs that are really started.
#include "cli_desk.h"

#include <filesystem>

namespace kiv {
namespace {

using testing::HasSubstr;

class UploadCommand : public CliTest {
  protected:
    UploadCommand()
    {
        for (const char* const name : {"XDG_STATE_HOME", "LOCALAPPDATA"})
            variables[name] = Native("state").make_preferred().string();
        std::filesystem::copy_file(KIV_UPLOAD_SENDER, Native("send.exe"));
        std::filesystem::copy_file(KIV_UPLOAD_SENDER, Native("send2.exe"));
        Put("site/_template.txt", "<!--BODY HERE-->\n");
        Put("site/_html.txt", "@FILE = a\n@TITLE = A\n<img src=\"pics/sea side.gif\">\n"
                              "@FILE = b\n@TITLE = B\nb\n@FILE = c\n@TITLE = C\n++c.txt\n");
        Put("site/c.txt", "c\n");
        Put("site/pics/sea side.gif", "GIF");
        Put("site/pics/unused.gif", "GIF");
    }

    void Command(const std::string& command) const
    {
        Put("utils/ftplist.txt", "C:\\site\\|" + command + "\n");
    }
    void Build() { EXPECT_EQ(Call({"build", "C:\\site"}).code, 0); }
    Printed Upload(const Texts& options = {})
    {
        Texts call = {"upload", "C:\\site"};
        call.insert(call.end(), options.begin(), options.end());
        return Call(call);
    }
    /// At which file, or "all", the program fails from now on; "": at none.
    void FailAt(const std::string& name) const { Put("site/fails", name); }
    /// What the program has noted, which begins anew then.
    std::string Sent() const
    {
        const std::string sent = Exists("site/sent") ? Content("site/sent") : "";
        Put("site/sent", "");
        return sent;
    }
};

TEST_F(UploadCommand, OnceWithAllThatChanged)
{
    Command("C:\\send.exe");
    Build();
    EXPECT_EQ(Upload().out, "4 files sent\n");
    EXPECT_EQ(Sent(), "begin\na.htm\nb.htm\nc.htm\npics/sea side.gif\n");
    EXPECT_EQ(Upload().out, "Nothing to send: 4 files on record\n");
    EXPECT_EQ(Sent(), "");
    Put("site/c.txt", "new\n");
    Put("site/pics/sea side.gif", "GIF89a");
    Build();
    EXPECT_EQ(Upload().out, "2 files sent\n");
    EXPECT_EQ(Sent(), "begin\nc.htm\npics/sea side.gif\n");
}

TEST_F(UploadCommand, OnceForEachFile)
{
    Command("C:\\send.exe @@ to/@@");
    Build();
    EXPECT_EQ(Upload().out, "4 files sent\n");
    EXPECT_EQ(Sent(), "a.htm to/a.htm\nb.htm to/b.htm\nc.htm to/c.htm\n"
                      "pics/sea side.gif to/pics/sea side.gif\n");
}

TEST_F(UploadCommand, GoesOnWhereItFailed)
{
    Command("C:\\send.exe @@");
    FailAt("b.htm");
    Build();
    const Printed failed = Upload();
    EXPECT_EQ(failed.code, 1);
    EXPECT_THAT(failed.err, HasSubstr("the upload program ended with code 7; 1 file sent, 3 left"));
    EXPECT_THAT(failed.err, HasSubstr("Start upload again: it goes on with what is left."));
    EXPECT_EQ(Sent(), "a.htm\n");
    FailAt("");
    EXPECT_EQ(Upload().out, "3 files sent\n");
    EXPECT_EQ(Sent(), "b.htm\nc.htm\npics/sea side.gif\n");
}

// Nobody knows what a single run that failed has brought over.
TEST_F(UploadCommand, ASingleRunThatFailedIsDoneAgain)
{
    Command("C:\\send.exe");
    FailAt("all");
    Build();
    EXPECT_EQ(Upload().code, 1);
    FailAt("");
    EXPECT_EQ(Upload().out, "4 files sent\n");
}

TEST_F(UploadCommand, AnotherCommandIsAnotherServer)
{
    Command("C:\\send.exe");
    Build();
    Upload();
    Command("C:\\send2.exe");
    EXPECT_EQ(Upload().out, "4 files sent\n");
}

TEST_F(UploadCommand, ADryRunTouchesNothing)
{
    Command("C:\\send.exe @@");
    Build();
    Put("guestout2.bat", "mine");
    EXPECT_EQ(Upload({"--dry-run"}).out, "4 files of 4 to send\n"
                                         "C:\\send.exe a.htm\nC:\\send.exe b.htm\n"
                                         "C:\\send.exe c.htm\n"
                                         "C:\\send.exe \"pics/sea side.gif\"\n");
    EXPECT_EQ(Content("guestout2.bat"), "mine");
    EXPECT_FALSE(Exists("site/sent"));
    EXPECT_FALSE(Exists("state"));
    EXPECT_EQ(Upload().out, "4 files sent\n");
}

TEST_F(UploadCommand, TellsWhatIsNotBuiltAndWhatIsGone)
{
    Command("C:\\send.exe");
    EXPECT_THAT(Upload({"--dry-run"}).err, HasSubstr("not built yet: 3 pages"));
    Build();
    Upload();
    Put("site/_html.txt", "@FILE = a\n@TITLE = A\nnew\n");
    const Printed printed = Upload();
    EXPECT_THAT(printed.err, HasSubstr("not what the sources would make now: 1 page"));
    EXPECT_THAT(printed.err, HasSubstr("3 files that went to the server once"));
    EXPECT_EQ(Upload().err.find("went to the server once"), std::string::npos); // told once
}

TEST_F(UploadCommand, WhatKeepsItFromBeginning)
{
    Build();
    EXPECT_THAT(Upload().err, HasSubstr("the upload list has no line for C:\\site\\"));
    Command("");
    EXPECT_THAT(Upload().err, HasSubstr("the upload list has no command for C:\\site\\"));
    Command("no-such-program-here @@");
    const Printed printed = Upload();
    EXPECT_EQ(printed.code, 1);
    EXPECT_THAT(printed.err, HasSubstr("there is no such program: no-such-program-here @@"));
}

} // namespace
} // namespace kiv
