// The settings and list files.
#include "shell_desk.h"

namespace kiv {
namespace {

using ListFiles = ShellTest;

struct ListRow {
    std::string content;
    std::string expected;
};

TEST_F(ListFiles, TheEditorCommandEndsInABlank)
{
    const std::vector<ListRow> rows = {
        {"c:\\pad.exe\r\n", "c:\\pad.exe "},
        {"c:\\pad.exe ", "c:\\pad.exe "},
        {"c:\\pad.exe  \n", "c:\\pad.exe  "}, // not trimmed
        {" c:\\pad.exe -x", " c:\\pad.exe -x "},
        {"c:\\pad.exe\t\n", "c:\\pad.exe\t "}, // a tab is no blank
        {"a\nb\n", "a "},                      // the first line alone
        {"a\rb\n", "a\rb "},                   // a CR alone ends no line
    };
    for (const ListRow& row : rows) {
        Put("utils/kiv_editpad.txt", row.content);
        const EditorSetting setting = loadeditor(*files);
        EXPECT_EQ(setting.command, row.expected) << row.content;
        EXPECT_FALSE(setting.editor_is_missing);
    }
}

TEST_F(ListFiles, WithoutAnEditorCommandTheUsualEditorIsTaken)
{
    for (const std::optional<std::string>& content :
         std::vector<std::optional<std::string>>{"", "\r\nc:\\pad.exe\r\n", std::nullopt}) {
        std::filesystem::remove(Native("utils/kiv_editpad.txt"));
        if (content)
            Put("utils/kiv_editpad.txt", *content);
        const EditorSetting setting = loadeditor(*files);
        EXPECT_EQ(setting.command, "c:\\utils\\editpad.exe ");
        EXPECT_TRUE(setting.editor_is_missing);
    }
    Put("utils/EditPad.EXE");
    files->Refresh();
    EXPECT_FALSE(loadeditor(*files).editor_is_missing);
}

TEST_F(ListFiles, AJumpIsAddedBehindTheOthers)
{
    AddJump(*files, "C:\\site\\lab"); // no list yet
    EXPECT_EQ(Content("utils/kivjump.ini"),
              ";label|path\r\n;for example: quillcrest|e:\\internet\\quillcrest\\\r\n"
              "lab|C:\\site\\lab\\\r\n");
    Put("utils/kivjump.ini", "; mine\nDocs|d:\\docs"); // no line end, and none is changed
    AddJump(*files, "C:\\");
    EXPECT_EQ(Content("utils/kivjump.ini"), "; mine\nDocs|d:\\docs\r\nC:\\|C:\\\r\n");
}

TEST_F(ListFiles, AJumpThatCannotBeAddedLeavesTheList)
{
    std::string list = "Docs|C:\\Site\r\n";
    Put("utils/kivjump.ini", list);
    EXPECT_EQ(KindOf([&] { AddJump(*files, "C:\\site"); }), "file"); // there already
    EXPECT_EQ(KindOf([&] { AddJump(*files, "C:\\a|b"); }), "file");
    EXPECT_EQ(KindOf([&] { AddJump(*files, "C:\\;x"); }), "file");
    EXPECT_EQ(Content("utils/kivjump.ini"), list);
    for (int i = 1; i < 10; ++i)
        list += "x|C:\\x" + std::to_string(i) + "\r\n";
    Put("utils/kivjump.ini", list);
    EXPECT_EQ(KindOf([&] { AddJump(*files, "C:\\eleventh"); }), "file");
    EXPECT_EQ(Content("utils/kivjump.ini"), list);
}

TEST_F(ListFiles, JumpLines)
{
    Put("utils/kivjump.ini", ";label|path\r\n"
                             "\r\n"
                             "no bar\r\n"
                             "   \r\n"
                             "Docs | d:\\docs\r\n"
                             "  Site|c:\\site\\  \r\n"
                             "More|e:\\more|surplus\r\n"
                             "Root|\r\n"
                             " ;kept|f:\\x\n"
                             "|g:\\y");
    std::vector<JumpEntry> jumps = {{"old", "old"}};
    loadjumps(*files, jumps);
    Texts read;
    for (const JumpEntry& jump : jumps)
        read.push_back(jump.label + "=" + jump.path);
    EXPECT_EQ(read, (Texts{"Docs=d:\\docs\\", "Site=c:\\site\\", "More=e:\\more\\", "Root=\\",
                           ";kept=f:\\x\\", "=g:\\y\\"}));
}

TEST_F(ListFiles, AMissingJumpListIsEmpty)
{
    std::vector<JumpEntry> jumps = {{"old", "old"}};
    loadjumps(*files, jumps);
    EXPECT_TRUE(jumps.empty());
}

TEST_F(ListFiles, TheEleventhJumpEntryIsFatal)
{
    std::string list;
    for (int i = 0; i < 10; ++i)
        list += "a|b\n;x|y\n\n";
    Put("utils/kivjump.ini", list);
    std::vector<JumpEntry> jumps;
    loadjumps(*files, jumps);
    EXPECT_EQ(jumps.size(), 10U);
    Put("utils/kivjump.ini", list + "k|l\n");
    EXPECT_EQ(KindOf([&] { loadjumps(*files, jumps); }), "subscript");
    EXPECT_EQ(jumps.size(), 10U);
}

TEST_F(ListFiles, UploadLines)
{
    Put("utils/ftplist.txt", ";Label|ftp line\r\n" // no comment here
                             "\r\n"
                             " C:\\Site\\ | put @@ |surplus\r\n"
                             "x|");
    UploadEntries entries("upload entry");
    ASSERT_EQ(loadftplist(*files, entries), 3);
    EXPECT_EQ(entries[1].label, ";Label");
    EXPECT_EQ(entries[1].command, "ftp line");
    EXPECT_EQ(entries[2].label, " C:\\Site\\ "); // not trimmed
    EXPECT_EQ(entries[2].command, " put @@ ");
    EXPECT_EQ(entries[3].command, "");
    EXPECT_EQ(entries[0].label, "");
}

TEST_F(ListFiles, BadUploadLists)
{
    UploadEntries entries("upload entry");
    EXPECT_EQ(loadftplist(*files, entries), 0);
    for (const char* line : {"no bar", " "}) {
        Put("utils/ftplist.txt", line);
        EXPECT_EQ(KindOf([&] { loadftplist(*files, entries); }), "subscript") << line;
    }
    std::string list;
    for (int i = 0; i < 50; ++i)
        list += "a|b\n\n";
    Put("utils/ftplist.txt", list);
    EXPECT_EQ(loadftplist(*files, entries), 50);
    Put("utils/ftplist.txt", list + "a|b");
    const std::optional<RunError> error = workspace.Run([&] { loadftplist(*files, entries); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, ErrorKind::subscript);
    EXPECT_EQ(error->where.Text(), "c:\\utils\\ftplist.txt, line 101");
}

TEST_F(ListFiles, SampleLists)
{
    ProvideJumpList(*files);
    ProvideUploadList(*files);
    EXPECT_EQ(Content("utils/kivjump.ini"),
              ";label|path\r\n;for example: quillcrest|e:\\internet\\quillcrest\\\r\n");
    EXPECT_EQ(Content("utils/ftplist.txt"),
              ";Label|ftp line\r\n;for example: Test|E:\\progs\\ws_ftp\\ftp95pro.exe -i "
              "zu_pa000.ini -p zu -s local:e:/test/test.htm -d Test:/public/test/test.htm\r\n");
    // The samples of the one list are comments, those of the other are entries.
    std::vector<JumpEntry> jumps;
    loadjumps(*files, jumps);
    EXPECT_TRUE(jumps.empty());
    UploadEntries entries("upload entry");
    ASSERT_EQ(loadftplist(*files, entries), 2);
    EXPECT_EQ(entries[2].label, ";for example: Test");
}

TEST_F(ListFiles, AListThatIsThereStays)
{
    Put("utils/KIVJUMP.INI", "mine");
    ProvideJumpList(*files);
    EXPECT_EQ(Content("utils/KIVJUMP.INI"), "mine");
    EXPECT_EQ(NamesIn("utils"), (Texts{"KIVJUMP.INI"}));
}

TEST_F(ListFiles, Addresses)
{
    EXPECT_EQ(LoadAddresses(*files).recipient, "webmaster@example.com");
    Put("utils/kivaddr.ini", "; a remark|x\r\n"
                             "\r\n"
                             "no bar\r\n"
                             " Recipient | me@example.org |surplus\r\n"
                             "KEL|http://a.example/\r\n"
                             "kel|http://b.example/\r\n"
                             "unknown|x");
    const kiv::Addresses addresses = LoadAddresses(*files);
    EXPECT_EQ(addresses.recipient, "me@example.org");
    EXPECT_EQ(addresses.kel, "http://b.example/"); // the later line wins
    EXPECT_EQ(addresses.sender, "webmaster@example.com");
}

} // namespace
} // namespace kiv
