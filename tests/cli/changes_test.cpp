// What a build did: how many files changed, which, and the exit code of a strict one.
#include "cli/changes.h"
#include "cli_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Changes : public CliTest {
  protected:
    Changes()
    {
        PutSite("site", "@FILE = index\n@TITLE = T\n\ntext\n");
        shell_folder = Root().string();
    }

    void PutSite(const std::string& below, const std::string& list)
    {
        Put(below + "/_html.txt", list);
        Put(below + "/_template.txt", ";\n");
    }

    static std::string Preferred(const std::string& path)
    {
        return std::filesystem::path(path).make_preferred().string();
    }

    std::string Changed(Texts more = {})
    {
        more.insert(more.begin(), {"build", "C:\\site", "--changed"});
        return Call(more).out;
    }
};

TEST_F(Changes, InWords)
{
    EXPECT_EQ(ChangeWords({412, 3}), "3 of 412 files changed");
    EXPECT_EQ(ChangeWords({2, 1}), "1 of 2 files changed");
    EXPECT_EQ(ChangeWords({1, 1}), "1 of 1 file changed");
    EXPECT_EQ(ChangeWords({1, 0}), "0 of 1 file changed");
}

TEST_F(Changes, ASecondBuildChangesNothing)
{
    EXPECT_EQ(Call({"build", "C:\\site"}).out, "1 files written\n3 of 3 files changed\n");
    EXPECT_EQ(Call({"build", "C:\\site"}).out, "1 files written\n0 of 3 files changed\n");
    Put("site/_html.txt", "@FILE = index\n@TITLE = T\n\nother\n");
    EXPECT_EQ(Call({"build", "C:\\site"}).out, "1 files written\n1 of 3 files changed\n");
}

/// The later page stays, so the earlier one is no change however often it is written over it.
TEST_F(Changes, APageThatIsWrittenTwiceCountsOnce)
{
    PutSite("site", "@FILE = a\n@TITLE = A\n\nfirst\n@FILE = A.HTM\n@TITLE = B\n\nanother\n");
    EXPECT_EQ(Call({"build", "C:\\site"}).out, "2 files written\n3 of 3 files changed\n");
    EXPECT_EQ(Call({"build", "C:\\site"}).out, "2 files written\n0 of 3 files changed\n");
    const Json written = Report({"build", "C:\\site"})["written"];
    ASSERT_EQ(written.Size(), 4U); // as in "files"
    EXPECT_THAT(written[0].Keys(), ElementsAre("path", "native", "changed"));
    EXPECT_EQ(written[0]["path"], "C:\\site\\a.htm");
    EXPECT_EQ(written[0]["native"], NativeOf("site/a.htm"));
    EXPECT_EQ(written[0]["changed"], Json::Parse("false"));
    EXPECT_EQ(written[1]["path"], "C:\\site\\A.HTM");
}

TEST_F(Changes, AnUploadBatchIsComparedWithTheFormerOne)
{
    for (const char* const command : {"put it", "put @@"}) {
        Put("utils/ftplist.txt", "C:\\site\\|" + std::string(command) + "\r\n");
        Call({"build", "C:\\site"});
        EXPECT_EQ(Call({"build", "C:\\site"}).out, "1 files written\n0 of 4 files changed\n")
            << command;
    }
}

TEST_F(Changes, WhatBuildsNothingSaysNothing)
{
    EXPECT_EQ(Call({"build", "C:\\utils"}).out, "");
    EXPECT_EQ(Call({"group", "C:\\site"}).out, "");
    Put("site/_group.txt", "");
    Put("site/_sitemap.txt", "");
    EXPECT_EQ(Call({"sitemap", "C:\\site"}).out, "");
    EXPECT_THAT(Call({"why", "C:\\site", "index"}).out, testing::Not(HasSubstr("changed")));
}

TEST_F(Changes, AnErrorLeavesThePagesBeforeIt)
{
    PutSite("site", "@FILE = a\n@TITLE = A\n\nfirst\n@FILE = b\n@TITLE = B\n\n!!pop[]\n");
    EXPECT_EQ(Changed(), "a.htm\n");
    const Printed printed = Call({"build", "C:\\site"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.out, "b.htm\n0 of 1 file changed\n"); // the page in work
}

TEST_F(Changes, TheListIsRelativeToTheSite)
{
    Put("other/x.txt", "");
    PutSite("site", "@FILE = sub\\b\n@TITLE = B\n\n@FILE = ..\\other\\c\n@TITLE = C\n\n");
    Put("site/sub/x.txt", "");
    EXPECT_EQ(Changed(), Preferred("sub/b.htm") + "\n" + NativeOf("other/c.htm") +
                             "\n_toc.txt\n_sitemap.txt\n");
    EXPECT_EQ(Changed(), "");
    std::filesystem::remove(Native("site/sub/b.htm"));
    EXPECT_EQ(Changed({"-0"}), Preferred("sub/b.htm") + std::string(1, '\0'));
    std::filesystem::remove(Native("site/sub/b.htm"));
    shell_folder = Native("site").string();
    EXPECT_EQ(Changed(), Preferred("sub/b.htm") + "\n"); // wherever the shell is
}

/// Beside it there is no status; what went wrong is on standard error all the same.
TEST_F(Changes, TheListStandsAlone)
{
    PutSite("site", "@FILE = a\n@TITLE = A\n\n!!mailto[x\n");
    const Printed printed = Call({"build", "C:\\site", "--changed"});
    EXPECT_EQ(printed.out, "a.htm\n_toc.txt\n_sitemap.txt\n");
    EXPECT_THAT(printed.err, HasSubstr(":4: warning: Missing closed bracket: x"));
    EXPECT_EQ(Call({"build", "C:\\site", "-0"}).err, "kiv: error: -0 needs --changed\n"
                                                     "Try: kiv-cli build --help\n");
    Call({"--json", "build", "C:\\site", "--changed"}); // one object and nothing else
    EXPECT_EQ(Report({"build", "C:\\site", "--changed"})["status"], "1 files written");
}

#ifndef _WIN32 // where no name holds these
TEST_F(Changes, NamesGoToAPipeAsTheyAreAndAreShownOnATerminal)
{
    PutSite("site", "@FILE = \x1b[2J\x7f\n@TITLE = A\n\n@FILE = caf\xE9\n@TITLE = B\n\n");
    const std::string rest = "_toc.txt\n_sitemap.txt\n";
    EXPECT_EQ(Changed(), "\x1b[2J\x7f.htm\ncaf\xC3\xA9.htm\n" + rest);
    std::filesystem::remove(Native("site/\x1b[2J\x7f.htm"));
    out_is_terminal = true;
    EXPECT_EQ(Changed(), "\\x1B[2J\\x7F.htm\n");
}

TEST_F(Changes, ANameWithALineEndAsksForNul)
{
    PutSite("a\nb", "@FILE = x\n@TITLE = X\n");
    PutSite("a\nb/c", "@FILE = y\n@TITLE = Y\n");
    Put("a\nb/c/_group.txt", "..\n");
    const std::string folder = Native("a\nb/c").string();
    EXPECT_EQ(Call({"group", folder, "--changed"}).err,
              "kiv: warning: the name of a changed file holds a line end; -0 keeps it apart\n");
    std::filesystem::remove(Native("a\nb/x.htm"));
    EXPECT_EQ(Call({"group", folder, "--changed", "-0"}).err, "");
}
#endif

#ifdef __linux__ // where a name may be of any bytes
TEST_F(Changes, AFolderWhoseNameIsNoUtf8)
{
    PutSite("b\xE9"
            "d",
            "@FILE = index\n@TITLE = T\ntext\n");
    const std::string native = Native("b\xE9"
                                      "d")
                                   .string();
    Texts call = {"build", native, "--json"};
    const Json written = Json::Parse(CallBare(call).out)["written"];
    EXPECT_EQ(written[0]["native"], Root().string() + "/b\\xE9"
                                                      "d/index.htm");
    call = {"why", native, "index", "--json"};
    EXPECT_THAT(Json::Parse(CallBare(call).out)["lines"].Dump(), HasSubstr("b\\\\xE9d/_html.txt"));
    std::filesystem::remove(native + "/index.htm");
    call = {"build", native, "--changed"};
    EXPECT_EQ(CallBare(call).out, "index.htm\n");
}
#endif

/// For programs such as rsync "#" and ";" begin a comment, and for others "-" an option.
TEST_F(Changes, ANameThatLooksLikeSomethingElseGetsItsFolder)
{
    PutSite("site", "@FILE = #a\n@TITLE = A\n\n@FILE = -b\n@TITLE = B\n\n");
    EXPECT_EQ(Changed(), "./#a.htm\n./-b.htm\n_toc.txt\n_sitemap.txt\n");
}

TEST_F(Changes, AGroupIsSummedUpByFolder)
{
    Put("site/_group.txt", "a\nb\n");
    PutSite("site/a", "@FILE = a\n@TITLE = A\n\n!!mailto[x\n@FILE = b\n@TITLE = B\n\n!!mailto[y\n");
    Put("site/b/x.txt", "");
    EXPECT_EQ(Call({"group", "C:\\site"}).out,
              "2 files written\nsite: 3 of 3 files changed\n" + Preferred("site/a") +
                  ": 4 of 4 files changed, 2 warnings\n" + Preferred("site/b") +
                  ": nothing written, 1 warning\n7 of 7 files changed\n");
    EXPECT_EQ(Call({"group", "C:\\site", "--changed"}).out, "");
    std::filesystem::remove(Native("site/a/b.htm"));
    const Json report = Report({"group", "C:\\site"});
    EXPECT_EQ(report["members"], Json::Parse(R"([
        {"folder": "C:\\site", "status": "1 files written", "written": 3, "changed": 0, "warnings": 0},
        {"folder": "C:\\site\\a", "status": "2 files written", "written": 4, "changed": 1,
         "warnings": 2},
        {"folder": "C:\\site\\b", "status": "", "written": 0, "changed": 0, "warnings": 1}])"));
    std::filesystem::remove(Native("site/a/b.htm"));
    EXPECT_EQ(Call({"group", "C:\\site", "--changed"}).out, Preferred("a/b.htm") + "\n");
    shell_folder = Native("site").string();
    EXPECT_THAT(Call({"group", "C:\\site"}).out, HasSubstr("\n.: 0 of 3 files changed\na: 0 of 4"));
}

TEST_F(Changes, AFileThatTwoMembersWriteCountsForEachAndOnceInTheSum)
{
    Put("site/_group.txt", "a\nb\n");
    PutSite("site/a", "@FILE = a\n@TITLE = A\n\n");
    PutSite("site/b", "@FILE = c\n@TITLE = C\n\n@FILE = ..\\a\\a.htm\n@TITLE = B\n\n");
    EXPECT_THAT(Call({"group", "C:\\site"}).out,
                HasSubstr(Preferred("site/a") + ": 3 of 3 files changed\n" + Preferred("site/b") +
                          ": 4 of 4 files changed\n9 of 9 files changed\n"));
}

TEST_F(Changes, AMemberThatFailsIsTold)
{
    Put("site/_group.txt", "a\n");
    PutSite("site/a", "@FILE = a\n@TITLE = A\n\n@FILE = b\n@TITLE = B\n\n!!pop[]\n");
    const Json members = Report({"group", "C:\\site"})["members"];
    ASSERT_EQ(members.Size(), 2U);
    EXPECT_EQ(members[1], Json::Parse(R"({"folder": "C:\\site\\a", "status": "b.htm", "written": 1,
                                          "changed": 1, "warnings": 0})"));
    EXPECT_EQ(Report({"group", "C:\\utils"})["members"], Json::Parse("[]"));
}

TEST_F(Changes, AStrictBuildFailsAfterAnyWarning)
{
    PutSite("warned", "@FILE = a\n@TITLE = A\n\n!!mailto[x\n");
    PutSite("broken", "@FILE = a\n@TITLE = A\n\n!!mailto[x\n!!pop[]\n");
    PutSite("noted", "@FILE = _html.txt\n@TITLE = A\n");
    Put("listed/_html.txt", "@FILE = a\n");
    Put("framed/_template.txt", ";\n");
    Put("site/_group.txt", "a\n");
    Put("site/a/_template.txt", ";\n"); // without a list
    struct Row {
        Texts call;
        int code;
        int strict_code;
    };
    for (const Row& row : std::vector<Row>{{{"build", "C:\\site"}, 0, 0},
                                           {{"build", "C:\\warned"}, 0, 3},
                                           {{"build", "C:\\noted"}, 0, 3},
                                           {{"build", "C:\\listed"}, 0, 3},
                                           {{"build", "C:\\framed"}, 0, 3},
                                           {{"build", "C:\\broken"}, 1, 1},
                                           {{"build", "C:\\gone"}, 1, 1},
                                           {{"group", "C:\\site"}, 0, 3}}) {
        Texts call = row.call;
        const std::string list = row.call[1] == "C:\\noted" ? Content("noted/_html.txt") : "";
        EXPECT_EQ(Call(call).code, row.code) << call[1];
        if (!list.empty())
            Put("noted/_html.txt", list);
        call.emplace_back("--strict");
        EXPECT_EQ(Call(call).code, row.strict_code) << call[1];
        if (!list.empty())
            Put("noted/_html.txt", list);
        call.emplace_back("--json");
        EXPECT_EQ(Call(call).code, row.strict_code) << call[1];
    }
}

} // namespace
} // namespace kiv
