// The manual that comes with kiv.
#include "shell/commands.h"
#include "shell/manual.h"
#include "shell_desk.h"

namespace kiv {
namespace {

class Manual : public ShellTest {
  protected:
    std::optional<RunError> Open()
    {
        return workspace.Run([&] { RunCommand(workspace, *FindCommand("manual")); });
    }
};

struct PlaceRow {
    const char* program_folder;
    const char* manual;
};

TEST_F(Manual, LiesWhereItIsInstalledOrMade)
{
    const std::vector<PlaceRow> rows = {
        {"C:\\usr\\bin", "usr/share/doc/kiv/manual/index.htm"},
        {"C:\\Program Files\\kiv\\bin", "Program Files/kiv/manual/index.htm"},
        {"C:\\kiv\\build\\run\\desktop", "kiv/build/run/docs/manual/site/index.htm"},
    };
    for (const PlaceRow& row : rows) {
        workspace.ProgramFolder = row.program_folder;
        EXPECT_EQ(ManualFor(*files, row.program_folder), "");
        Put(row.manual);
        std::string path = "C:\\" + std::string(row.manual);
        std::replace(path.begin(), path.end(), '/', '\\');
        EXPECT_EQ(ManualFor(*files, row.program_folder), path);
        programs.started.clear();
        EXPECT_FALSE(Open());
        EXPECT_EQ(programs.started, Texts{"explorer " + path});
        EXPECT_EQ(programs.files, Texts{path}); // one argument, blanks and all
        programs.files.clear();
    }
}

TEST_F(Manual, ThatIsNotThereIsAnErrorThatSaysWhatToDo)
{
    workspace.ProgramFolder = "C:\\usr\\bin";
    const std::optional<RunError> error = Open();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, ErrorKind::file);
    EXPECT_EQ(error->text, "the manual is not where kiv looks for it");
    EXPECT_NE(error->hint, "");
    EXPECT_EQ(programs.started, Texts());
}

} // namespace
} // namespace kiv
