// The editors that are offered: those that are there, each with its way to a line.
#include "shell/editors.h"
#include "shell_desk.h"

namespace kiv {
namespace {

class Editors : public ShellTest {
  protected:
    Texts Offered(const Texts& folders = {}) { return InstalledEditors(programs, folders); }
};

TEST_F(Editors, NothingIsOfferedWhereNothingIs)
{
    EXPECT_EQ(Offered(), Texts());
}

TEST_F(Editors, EachHasItsWayToALine)
{
    programs.there = {"kate", "gedit", "mousepad", "code", "xdg-open", "gnome-text-editor"};
    EXPECT_EQ(Offered(), (Texts{"gnome-text-editor", "gedit +%l %f", "kate --line %l %f",
                                "mousepad --line %l %f", "code --goto %f:%l", "xdg-open"}));
}

TEST_F(Editors, ThoseOfATerminalNeedOne)
{
    programs.there = {"vim", "nano"};
    EXPECT_EQ(Offered(), Texts());
    programs.there = {"vim", "xterm", "konsole"};
    EXPECT_EQ(Offered(), Texts{"konsole -e vim +%l %f"});
    programs.there = {"vim", "nano", "gnome-terminal"};
    EXPECT_EQ(Offered(), (Texts{"gnome-terminal -- vim +%l %f", "gnome-terminal -- nano +%l %f"}));
}

TEST_F(Editors, AreFoundInTheFoldersOfProgramsToo)
{
    programs.there = {"\"C:\\Program Files\\Notepad++\\notepad++.exe\"",
                      "\"C:\\Users\\ada\\Programs\\Microsoft VS Code\\Code.exe\"", "notepad"};
    EXPECT_EQ(Offered({"C:\\Program Files", "C:\\Users\\ada\\Programs\\"}),
              (Texts{"\"C:\\Program Files\\Notepad++\\notepad++.exe\" -n%l %f",
                     "\"C:\\Users\\ada\\Programs\\Microsoft VS Code\\Code.exe\" --goto %f:%l",
                     "notepad"}));
    programs.there.insert("notepad++"); // on PATH: once is enough
    EXPECT_EQ(Offered({"C:\\Program Files"}), (Texts{"notepad++ -n%l %f", "notepad"}));
}

TEST_F(Editors, TheUsualOneIsMissingWhenNoneIsSet)
{
    EXPECT_TRUE(EditorIsMissing(*files));
    Put("utils/editpad.exe", "");
    EXPECT_FALSE(EditorIsMissing(*files));
    std::filesystem::remove(Native("utils/editpad.exe"));
    Put("utils/kiv_editpad.txt", "gedit +%l %f\r\n");
    EXPECT_FALSE(EditorIsMissing(*files));
}

} // namespace
} // namespace kiv
