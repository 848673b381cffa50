// Renaming every file of a folder.
#include "shell/renames.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

struct NameRow {
    const char* name;
    const char* expected;
};

TEST(DirectoryTools, WebSafeNames)
{
    const std::vector<NameRow> rows = {
        {"My Photo (1).JPG", "my-photo--1-.jpg"},
        {"a___b", "a-_b"}, // each replacement once
        {"a - b", "a---b"},
        {"a____b", "a--b"},
        {"a%20b", "a-b"},
        {"a%25b", "ab"},
        {"a%2520b", "a20b"}, // "%25" goes after "%20" had its turn
        {"a,b'c&d", "a-bc-d"},
        {"_ _.txt", "_-_.txt"},
        {"_,_", "_-_"},
        {"_'_", "-"}, // joined by step 5, found by step 9
        {"\xC9T\xC9.HTM", "\xE9t\xE9.htm"},
        {"already-fine.htm", "already-fine.htm"},
        {"'", ""},
        // Exact forms: a character that the code page lacks, its reference as text, a stray byte.
        {"&#26085;&#128512; A.jpg", "-26085--128512--a.jpg"},
        {"_&#26085;_", "_-26085-_"},
        {"&#38;#26085;.jpg", "-#26085;.jpg"},
        {"CAF&#1114313;.jpg", "caf\xE9.jpg"},
        {"&#233;", "-#233;"},
    };
    for (const NameRow& row : rows)
        EXPECT_EQ(WebSafeName(row.name), row.expected) << row.name;
}

TEST(DirectoryTools, ThumbnailNames)
{
    const std::vector<NameRow> gifs = {
        {"Photo.GIF", "Photo_t.GIF"},   {"Pic.Gif", "Pic_t.Gif"},     {"pic_t.gif", "pic_t.gif"},
        {"PIC_T.GIF", "PIC_T.GIF"},     {"a.gif.gif", "a.gif_t.gif"}, // before the last one
        {"x_t.gif.gif", "x_t.gif.gif"}, {".gif", "_t.gif"},           {"a.jpg", "a.jpg"},
    };
    for (const NameRow& row : gifs)
        EXPECT_EQ(ThumbnailName(row.name, ".gif"), row.expected) << row.name;
    EXPECT_EQ(ThumbnailName("a_t.gif.jpg", ".jpg"), "a_t.gif_t.jpg"); // another extension's mark
    EXPECT_EQ(ThumbnailName("a.jpeg", ".jpg"), "a.jpeg");
}

class RenamingFiles : public ShellTest {
  protected:
    RenamingFiles()
    {
        workspace.LookAt("C:\\site");
        workspace.RecordsFolder = "C:\\state";
    }

    void PutNames(const Texts& names)
    {
        for (const std::string& name : names)
            Put("site/" + name, name);
    }
    static Renames Pairs(const std::vector<std::pair<const char*, const char*>>& pairs)
    {
        Renames renames;
        for (const auto& [from, to] : pairs)
            renames.push_back({from, to});
        return renames;
    }
};

TEST_F(RenamingFiles, FixingNames)
{
    PutNames({"B c.TXT", "a b.htm", "fine.htm"});
    std::filesystem::create_directories(Native("site/A Folder"));
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"A Folder", "a-b.htm", "b-c.txt", "fine.htm"}));
    EXPECT_EQ(Content("site/b-c.txt"), "B c.TXT");
    EXPECT_EQ(workspace.Renamed, Pairs({{"a b.htm", "a-b.htm"}, {"B c.TXT", "b-c.txt"}}));
    EXPECT_EQ(reporter.status, "Names fixed");
    EXPECT_THAT(files->Written(), IsEmpty());
}

TEST_F(RenamingFiles, OnlyTheCaseOfANameMayChange)
{
    PutNames({"PHOTO.JPG"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"photo.jpg"}));
}

TEST_F(RenamingFiles, ATakenNameEndsTheRun)
{
    PutNames({"A B.txt", "a 0.txt", "A-B.TXT", "c d.txt"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "file");
    // In the order of the listing: the first is done, the last is not touched.
    EXPECT_EQ(NamesIn("site"), (Texts{"A B.txt", "A-B.TXT", "a-0.txt", "c d.txt"}));
    EXPECT_EQ(Content("site/A-B.TXT"), "A-B.TXT");
    EXPECT_EQ(workspace.Renamed, Pairs({{"a 0.txt", "a-0.txt"}}));
    EXPECT_EQ(reporter.status, "");
}

TEST_F(RenamingFiles, AFolderTakesANameToo)
{
    PutNames({"a b"});
    std::filesystem::create_directories(Native("site/A-B"));
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "file");
    EXPECT_EQ(NamesIn("site"), (Texts{"A-B", "a b"}));
}

TEST_F(RenamingFiles, ANameThatWouldBeFreeLaterIsTaken)
{
    PutNames({"a", "aa"}); // "a" becomes "aa", which would become "aaaa"
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "a", "aa"); }), "file");
    EXPECT_EQ(NamesIn("site"), (Texts{"a", "aa"}));
}

TEST_F(RenamingFiles, NamesThatCannotBe)
{
    PutNames({"b.txt"});
    for (const char* replacement : {"", ".", "..", "x\\y", "x/y", "..\\b.txt"}) {
        const std::optional<RunError> error =
            workspace.Run([&] { dorenamefiles(workspace, "b.txt", replacement); });
        ASSERT_TRUE(error) << replacement;
        EXPECT_EQ(error->kind, ErrorKind::file) << replacement;
        EXPECT_EQ(NamesIn("site"), (Texts{"b.txt"})) << replacement;
        EXPECT_THAT(workspace.Renamed, IsEmpty());
    }
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "b", std::string(252, 'x')); }), "file");
    EXPECT_EQ(NamesIn("site"), (Texts{"b.txt"}));
}

#ifndef _WIN32 // whose names are counted in other units
TEST_F(RenamingFiles, ADryRunKnowsHowLongANameMayBe)
{
    // 84 characters of three bytes each, which stand as references in the text: 252 bytes.
    std::string many;
    for (int i = 0; i < 84; ++i)
        many += "\xE4\xB8\xAD";
    Put("site/" + many + ".a", "");
    for (const Renaming renaming : {Renaming::dry_run, Renaming::real}) {
        EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, ".a", ".abc", renaming); }), "file");
        EXPECT_THAT(workspace.Renamed, IsEmpty());
    }
    for (const Renaming renaming : {Renaming::dry_run, Renaming::real})
        EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, ".a", ".ab", renaming); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{many + ".ab"}));
}
#endif

#ifndef _WIN32 // which allows no ":" in names
TEST_F(RenamingFiles, ANameThatLooksLikeADriveIsAName)
{
    PutNames({"b-1.txt"});
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "-", ":"); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"b:1.txt"}));
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, ":", "+"); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"b+1.txt"}));
}
#endif

TEST_F(RenamingFiles, FindAndReplace)
{
    PutNames({"aXa.txt", "axa.txt2", "other"});
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "a", "aa"); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"aaXaa.txt", "aaxaa.txt2", "other"}));
    EXPECT_EQ(reporter.status, "");
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "X", ""); }), ""); // case matters
    EXPECT_EQ(NamesIn("site"), (Texts{"aaaa.txt", "aaxaa.txt2", "other"}));
    EXPECT_THAT(reporter.shown, IsEmpty());
}

TEST_F(RenamingFiles, AnEmptyFindFieldGivesAMessage)
{
    PutNames({"a b"});
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "", "x"); }), "");
    EXPECT_EQ(reporter.shown, (Texts{"Fill in find field, please"}));
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, " ", "_"); }), ""); // a blank is not empty
    EXPECT_EQ(NamesIn("site"), (Texts{"a_b"}));
}

TEST_F(RenamingFiles, Thumbnails)
{
    PutNames({"b.JPG", "a.gif", "c_t.gif", "d.jpeg", "E.Gif", "z.txt"});
    EXPECT_EQ(KindOf([&] { dodirt(workspace); }), "");
    EXPECT_EQ(workspace.Renamed,
              Pairs({{"a.gif", "a_t.gif"}, {"E.Gif", "E_t.Gif"}, {"b.JPG", "b_t.JPG"}}));
    EXPECT_EQ(NamesIn("site"),
              (Texts{"E_t.Gif", "a_t.gif", "b_t.JPG", "c_t.gif", "d.jpeg", "z.txt"}));
    EXPECT_EQ(reporter.status, "_t complete");
}

TEST_F(RenamingFiles, ADryRunForetellsTheRun)
{
    const std::vector<Texts> folders = {
        {"B c.TXT", "a b.htm", "fine.htm"},
        {"A B.txt", "a 0.txt", "A-B.TXT", "c d.txt"},
        {"a b", "a,b"},       // the second finds the name of the first
        {"PHOTO.JPG", "x y"}, // only the case changes
        {"x", "'"},
        {"A", "a"}, // two files by the names of one
    };
    for (const Texts& names : folders) {
        for (const std::string& old : NamesIn("site"))
            std::filesystem::remove(Native("site") / old);
        PutNames(names);
        const Texts before = NamesIn("site");
        reporter.status.clear();
        const std::optional<RunError> foretold =
            workspace.Run([&] { dodirfix(workspace, Renaming::dry_run); });
        const Renames plan = workspace.Renamed;
        EXPECT_EQ(NamesIn("site"), before);
        EXPECT_EQ(reporter.status, "");
        const std::optional<RunError> error = workspace.Run([&] { dodirfix(workspace); });
        EXPECT_EQ(workspace.Renamed, plan) << names[0];
        EXPECT_EQ(foretold ? foretold->text : "", error ? error->text : "") << names[0];
    }
}

#ifndef _WIN32 // where only administrators make links
TEST_F(RenamingFiles, ADryRunSeesALinkToNothing)
{
    PutNames({"a b", "c d"});
    std::filesystem::create_symlink("nowhere", Native("site") / "C-D");
    const std::optional<RunError> foretold =
        workspace.Run([&] { dodirfix(workspace, Renaming::dry_run); });
    const Renames plan = workspace.Renamed;
    ASSERT_TRUE(foretold);
    EXPECT_THAT(foretold->text, AllOf(HasSubstr("c d"), HasSubstr("target exists")));
    const std::optional<RunError> error = workspace.Run([&] { dodirfix(workspace); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, foretold->text);
    EXPECT_EQ(workspace.Renamed, plan);
}
#endif

TEST_F(RenamingFiles, ADryRunForetellsThumbnails)
{
    PutNames({"a.gif", "a.gif_t.jpg", "b.jpg", "B_T.jpg"});
    const std::optional<RunError> foretold =
        workspace.Run([&] { dodirt(workspace, Renaming::dry_run); });
    const Renames plan = workspace.Renamed;
    ASSERT_TRUE(foretold);
    EXPECT_THAT(foretold->text, AllOf(HasSubstr("b.jpg"), HasSubstr("target exists")));
    const std::optional<RunError> error = workspace.Run([&] { dodirt(workspace); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, foretold->text);
    EXPECT_EQ(workspace.Renamed, plan);
}

TEST_F(RenamingFiles, UndoingPutsTheNamesBack)
{
    const Texts names = {"B c.TXT", "PHOTO.JPG", "a b.htm", "fine.htm"};
    PutNames(names);
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    const Renames done = workspace.Renamed;
    EXPECT_EQ(done.size(), 3U);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, done); }), "");
    EXPECT_EQ(NamesIn("site"), names);
    for (const std::string& name : names)
        EXPECT_EQ(Content("site/" + name), name);
    // Last first.
    EXPECT_EQ(workspace.Renamed,
              Pairs({{"photo.jpg", "PHOTO.JPG"}, {"b-c.txt", "B c.TXT"}, {"a-b.htm", "a b.htm"}}));
}

TEST_F(RenamingFiles, CharactersThatTheCodePageLacksGoAndComeBack)
{
    const Texts names = {"&#26085;.jpg", "\xE6\x97\xA5 1.JPG", "\xE6\x97\xA5.jpg"};
    PutNames(names);
    EXPECT_EQ(KindOf([&] { dodirfix(workspace, Renaming::dry_run); }), "");
    const Renames plan = workspace.Renamed;
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"-#26085;.jpg", "-26085--1.jpg", "-26085-.jpg"}));
    EXPECT_EQ(Content("site/-#26085;.jpg"), "&#26085;.jpg");
    const Renames done = workspace.Renamed;
    EXPECT_EQ(done, Pairs({{"&#26085; 1.JPG", "-26085--1.jpg"},
                           {"&#26085;.jpg", "-26085-.jpg"},
                           {"&#38;#26085;.jpg", "-#26085;.jpg"}}));
    EXPECT_EQ(plan, done);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, done); }), "");
    EXPECT_EQ(NamesIn("site"), names);
    for (const std::string& name : names)
        EXPECT_EQ(Content("site/" + name), name);
    const Renames undone = workspace.Renamed;
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, undone); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"-#26085;.jpg", "-26085--1.jpg", "-26085-.jpg"}));
}

#ifndef _WIN32 // where names are made of whole characters, and none holds a backslash
TEST_F(RenamingFiles, BytesThatAreNoTextComeBack)
{
    PutNames({"\xC9 1.txt"}); // no UTF-8
    EXPECT_EQ(KindOf([&] { dodirfix(workspace, Renaming::dry_run); }), "");
    const Renames plan = workspace.Renamed;
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"\xC3\xA9-1.txt"}));
    EXPECT_EQ(workspace.Renamed, Pairs({{"&#1114313; 1.txt", "\xE9-1.txt"}}));
    EXPECT_EQ(workspace.Renamed, plan);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, plan); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"\xC9 1.txt"}));
}

TEST_F(RenamingFiles, ANameWithABackslashIsPassedOver)
{
    PutNames({"A\\B.gif", "C D.gif"});
    for (const Renaming renaming : {Renaming::dry_run, Renaming::real}) {
        reporter.shown.clear();
        EXPECT_EQ(KindOf([&] { dodirfix(workspace, renaming); }), "");
        EXPECT_EQ(workspace.Renamed, Pairs({{"C D.gif", "c-d.gif"}}));
        EXPECT_EQ(reporter.shown,
                  (Texts{"Left out because of the backslash in its name: A\\B.gif"}));
    }
    EXPECT_EQ(NamesIn("site"), (Texts{"A\\B.gif", "c-d.gif"}));
    reporter.shown.clear();
    EXPECT_EQ(KindOf([&] { dodirt(workspace); }), "");
    EXPECT_EQ(reporter.shown.size(), 1U); // as a GIF alone
    EXPECT_EQ(NamesIn("site"), (Texts{"A\\B.gif", "c-d_t.gif"}));
}
#endif

TEST_F(RenamingFiles, UndoingFollowsAFileThroughSeveralNames)
{
    PutNames({"c"});
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, Pairs({{"a", "b"}, {"b", "c"}})); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a"}));
}

TEST_F(RenamingFiles, UndoingNeverOverwrites)
{
    PutNames({"a-b", "a b", "c-d"});
    EXPECT_EQ(KindOf([&] {
                  UndoRenames(workspace, Pairs({{"a b", "a-b"}, {"c d", "c-d"}}));
              }),
              "file");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "a-b", "c d"}));
    EXPECT_EQ(Content("site/a b"), "a b");
    EXPECT_EQ(workspace.Renamed, Pairs({{"c-d", "c d"}}));
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, Pairs({{"x", "gone"}})); }), "file");
}

TEST_F(RenamingFiles, UndoingStaysInItsFolder)
{
    PutNames({"a"});
    Put("utils/b", "b");
    for (const Renames& renames :
         {Pairs({{"..\\utils\\a", "a"}}), Pairs({{"b", "../utils/b"}, {"c", "a"}}),
          Pairs({{"", "a"}}), Pairs({{"..", "a"}})}) {
        EXPECT_EQ(KindOf([&] { UndoRenames(workspace, renames); }), "file");
        EXPECT_EQ(NamesIn("site"), (Texts{"a"}));
        EXPECT_EQ(NamesIn("utils"), (Texts{"b"}));
    }
}

TEST_F(RenamingFiles, TheRenamerShowsTheFirstFile)
{
    EXPECT_EQ(SampleFileName(*files), "");
    std::filesystem::create_directories(Native("site/A"));
    PutNames({"c.txt", "B"});
    EXPECT_EQ(SampleFileName(*files), "B");
}

} // namespace
} // namespace kiv
