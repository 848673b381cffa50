// What a window asks before a command of a site runs, what it shows before, and what is done then.
#include "shell/builds.h"
#include "shell/commands.h"
#include "shell/site_addresses.h"
#include "shell/site_tasks.h"
#include "shell_desk.h"

#include <algorithm>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class SiteTasks : public ShellTest {
  protected:
    SiteTasks()
    {
        Put("site/_template.txt", "<title>@TITLE</title>\r\n<!--BODY HERE-->\r\n");
        Put("site/_html.txt", "@FILE = index\r\n@TITLE = Caf\xe9\r\n<p>One</p>\r\n");
        workspace.RecordsFolder = "C:\\state\\records";
        workspace.switchto("C:\\site");
    }

    TaskLook Look(const char* command, const TaskAnswers& answers = {})
    {
        TaskLook look;
        EXPECT_EQ(KindOf([&] { look = FindSiteTask(command)->look(workspace, answers); }), "");
        return look;
    }
    std::string RunTask(const char* command, const TaskAnswers& answers = {})
    {
        return KindOf([&] { FindSiteTask(command)->run(workspace, answers); });
    }
    std::string Fault(const char* command, const TaskAnswers& answers)
    {
        return FindSiteTask(command)->fault(workspace, answers);
    }
};

TEST_F(SiteTasks, CommandsThatOpenOneHaveOne)
{
    std::size_t count = 0;
    for (const Command& command : Commands()) {
        const SiteTask* const task = FindSiteTask(command.name);
        EXPECT_EQ(task != nullptr, command.opens == Opens::task) << command.name;
        count += task != nullptr ? 1U : 0U;
        if (task != nullptr && task->first_answers != nullptr) {
            EXPECT_EQ(task->first_answers(workspace).size(), task->questions.size());
        }
    }
    EXPECT_EQ(count, 5U);
}

TEST_F(SiteTasks, AnAddressIsAskedForAndKept)
{
    for (const char* const command : {"feed", "sitemap-xml"}) {
        EXPECT_EQ(Fault(command, {""}), "Give the address of the site.");
        EXPECT_NE(Fault(command, {"museum"}), "");
        EXPECT_EQ(Fault(command, {"https://host.example/"}), "");
    }
    EXPECT_THAT(FindSiteTask("feed")->first_answers(workspace), ElementsAre(""));
    EXPECT_EQ(KindOf([&] { BuildWorkDir(workspace); }), "");
    EXPECT_EQ(RunTask("sitemap-xml", {"https://host.example/"}), "");
    EXPECT_THAT(Content("site/sitemap.xml"),
                HasSubstr("<loc>https://host.example/index.htm</loc>"));
    Workspace next(machine);
    next.RecordsFolder = workspace.RecordsFolder;
    next.LookAt("c:\\SITE"); // its case is another spelling of the same
    EXPECT_THAT(FindSiteTask("feed")->first_answers(next), ElementsAre("https://host.example/"));
}

TEST_F(SiteTasks, EachFolderHasAnAddressOfItsOwn)
{
    KeepSiteAddress(workspace, "https://one.example/");
    PutFolder("site/lab");
    workspace.switchto("C:\\site\\lab");
    EXPECT_EQ(SiteAddress(workspace), "");
    KeepSiteAddress(workspace, "https://lab.example/");
    KeepSiteAddress(workspace, "https://new.example/lab|1"); // the last one counts
    EXPECT_EQ(SiteAddress(workspace), "https://new.example/lab|1");
    workspace.switchto("C:\\site");
    EXPECT_EQ(SiteAddress(workspace), "https://one.example/");
    workspace.RecordsFolder.clear(); // there is no place to keep it
    KeepSiteAddress(workspace, "https://two.example/");
    EXPECT_EQ(SiteAddress(workspace), "");
}

TEST_F(SiteTasks, AnEncodingIsSeenChangedAndTakenBack)
{
    const std::string before = Content("site/_html.txt");
    EXPECT_FALSE(Look("encode", {"As before the last change"}).is_possible);
    const TaskLook look = Look("encode", {"UTF-8"});
    EXPECT_THAT(look.lines, ElementsAre("_html.txt"));
    EXPECT_EQ(look.summary, "1 of 2 sources changes.");
    EXPECT_EQ(Content("site/_html.txt"), before);
    EXPECT_EQ(RunTask("encode", {"UTF-8"}), "");
    EXPECT_THAT(Content("site/_html.txt"), HasSubstr("Caf\xc3\xa9"));
    const TaskLook done = Look("encode", {"UTF-8"});
    EXPECT_FALSE(done.is_possible);
    EXPECT_EQ(done.summary, "0 of 2 sources change.");
    EXPECT_EQ(Look("encode", {"Windows-1252"}).lines.size(), 1U);
    const TaskLook undo = Look("encode", {"As before the last change"});
    EXPECT_THAT(undo.lines, ElementsAre("_html.txt"));
    EXPECT_EQ(undo.summary, "1 source gets back what it held before UTF-8.");
    EXPECT_EQ(RunTask("encode", {"As before the last change"}), "");
    EXPECT_EQ(Content("site/_html.txt"), before);
}

TEST_F(SiteTasks, AnUploadIsSeenBefore)
{
    Put("utils/ftplist.txt", "c:\\site\\|send --all\r\n");
    Put("site/index.htm", "<title>Caf\xe9</title>\r\n<p>One</p>\r\n");
    programs.there.insert("send --all");
    EXPECT_FALSE(IsAvailable(*FindCommand("upload-changes"), workspace));
    EXPECT_EQ(workspace.FollowLists(), std::nullopt);
    EXPECT_TRUE(IsAvailable(*FindCommand("upload-changes"), workspace));
    const TaskLook look = Look("upload-changes");
    EXPECT_THAT(look.lines, ElementsAre("index.htm"));
    EXPECT_EQ(look.summary, "1 of 1 files to send by: send --all");
    EXPECT_THAT(programs.started, ElementsAre());
    EXPECT_EQ(RunTask("upload-changes"), "");
    EXPECT_THAT(programs.started, ElementsAre("send --all"));
    EXPECT_THAT(programs.inputs, ElementsAre("index.htm\n"));
    EXPECT_EQ(reporter.status, "1 file sent");
    const TaskLook after = Look("upload-changes");
    EXPECT_FALSE(after.is_possible);
    EXPECT_EQ(after.summary, "Nothing to send: what the site has was sent as it is.");
}

TEST_F(SiteTasks, PagesAreAdoptedIntoAFolderBesideThem)
{
    Put("old/mill/index.htm", "<html><body>Mill</body></html>\r\n");
    EXPECT_EQ(Fault("adopt", {"", ""}), "Give the folder that the pages lie in.");
    EXPECT_EQ(Fault("adopt", {"C:\\gone", ""}), "there is no folder C:\\gone");
    EXPECT_NE(Fault("adopt", {"C:\\old\\mill", "C:\\site"}), ""); // something is in it
    EXPECT_EQ(Fault("adopt", {"C:\\old\\mill", ""}), "");
    EXPECT_FALSE(Exists("old/mill-site"));
    EXPECT_EQ(RunTask("adopt", {"C:\\old\\mill", ""}), "");
    EXPECT_TRUE(Exists("old/mill-site/_html.txt"));
    EXPECT_EQ(workspace.WorkDir, "C:\\old\\mill-site\\");
    EXPECT_EQ(Fault("adopt", {"C:\\old\\mill", "C:\\new\\mill"}), "");
}

} // namespace
} // namespace kiv
