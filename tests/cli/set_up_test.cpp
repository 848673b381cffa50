// What happens before a command.
#include "cli_desk.h"

namespace kiv {
namespace {

using CommandStart = CliTest;

TEST_F(CommandStart, AMissingEditorIsNotMentioned)
{
    EXPECT_EQ(Call({"fix-names", "C:\\site"}).err, "");
}

TEST_F(CommandStart, TheUploadBatchIsWorkedOut)
{
    Put("utils/ftplist.txt", "C:\\site\\|put it|surplus\r\n");
    Put("guestout2.bat", "old");
    EXPECT_EQ(Report({"fix-names", "C:\\site"})["files"], Json::Parse(R"(["C:\\guestout2.bat"])"));
    EXPECT_EQ(Content("guestout2.bat"), "put it\r\n");
    EXPECT_EQ(Report({"fix-names", "C:\\utils"})["files"], Json::Parse("[]"));
    EXPECT_FALSE(Exists("guestout2.bat"));
}

TEST_F(CommandStart, ABadUploadListEndsEveryCommandThatStartsLikeTheWindow)
{
    Put("utils/ftplist.txt", "no bar\r\n");
    Put("site/a b", "");
    for (const char* command :
         {"build", "group", "sitemap", "grab", "pictures", "fix-names", "thumb-names"})
        EXPECT_EQ(KindOf(Report({command, "C:\\site"})), "subscript") << command;
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_EQ(KindOf(Report({"convert"})), "");
    EXPECT_EQ(KindOf(Report({"reference", "1"})), "");
}

TEST_F(CommandStart, ALongJumpListDoesNotMatter)
{
    std::string jumps;
    for (int i = 0; i < 11; ++i)
        jumps += "a|b\n";
    Put("utils/kivjump.ini", jumps);
    EXPECT_EQ(KindOf(Report({"build", "C:\\site"})), "");
}

TEST_F(CommandStart, AFolderThatIsNotThereIsFatal)
{
    Put("guestout2.bat", "old");
    Put("utils/kiv.ini", "C:\\site\r\n"); // the window's business
    for (const char* command : {"build", "group", "fix-names", "grab"}) {
        const Printed printed = Call({command, "C:\\gone"});
        EXPECT_EQ(printed.code, 1) << command;
        EXPECT_THAT(printed.err,
                    testing::StartsWith(NativeOf("gone") + ": error: cannot change to C:\\gone"));
    }
    EXPECT_EQ(Content("guestout2.bat"), "old");
}

TEST_F(CommandStart, ADryRunLeavesTheBatchAlone)
{
    Put("utils/ftplist.txt", "C:\\site\\|put it\r\n");
    Put("guestout2.bat", "old");
    Put("site/a b", "");
    const Json report = Report({"fix-names", "--dry-run", "C:\\site"});
    EXPECT_EQ(report["files"], Json::Parse("[]"));
    EXPECT_EQ(report["status"], "");
    EXPECT_EQ(report["renamed"], Json::Parse(R"([["a b", "a-b"]])"));
    EXPECT_EQ(Content("guestout2.bat"), "old");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
}

TEST_F(CommandStart, CommandsWithoutASiteLeaveTheBatchAlone)
{
    Put("guestout2.bat", "old");
    input = "x";
    for (const Texts& call : std::vector<Texts>{
             {"convert", "--mode", "rs"}, {"dimensions", "1", "1", "1", "1"}, {"reference", "1"}})
        EXPECT_EQ(Call(call).code, 0);
    EXPECT_EQ(Content("guestout2.bat"), "old");
    EXPECT_FALSE(Exists("$$$x.txt"));
}

} // namespace
} // namespace kiv
