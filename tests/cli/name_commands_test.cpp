// The renamers and what takes them back.
#include "cli_desk.h"

namespace kiv {
namespace {

using testing::HasSubstr;

class NameCommands : public CliTest {
  protected:
    NameCommands()
    {
        for (const char* const name : {"XDG_STATE_HOME", "LOCALAPPDATA"})
            variables[name] = Native("state").make_preferred().string();
    }

    /// Writes a report and gives its native path.
    std::string Keep(const std::string& json)
    {
        Put("report.json", json);
        return Native("report.json").string();
    }
};

TEST_F(NameCommands, FixNames)
{
    Put("site/My Photo (1).JPG", "");
    Put("site/ok.htm", "");
    EXPECT_EQ(Call({"fix-names", "C:\\site", "--dry-run"}).out,
              "My Photo (1).JPG -> my-photo--1-.jpg\n");
    EXPECT_EQ(Call({"fix-names", "C:\\site"}).out, "Names fixed\n");
    EXPECT_EQ(NamesIn("site"), (Texts{"my-photo--1-.jpg", "ok.htm"}));
}

TEST_F(NameCommands, ThumbNames)
{
    Put("site/Pic.Gif", "");
    Put("site/PIC_T.jpg", "");
    EXPECT_EQ(Call({"thumb-names", "--dry-run", "C:\\site"}).out, "Pic.Gif -> Pic_t.Gif\n");
    const Json report = Report({"thumb-names", "C:\\site"});
    EXPECT_EQ(report["status"], "_t complete");
    EXPECT_EQ(report["renamed"], Json::Parse(R"([["Pic.Gif", "Pic_t.Gif"]])"));
    EXPECT_EQ(report["files"], Json::Parse("[]")); // renamed files are not written
}

TEST_F(NameCommands, Rename)
{
    Put("site/a.htm", "");
    const Json report = Report({"rename", "C:\\site", ".htm", ".html"});
    EXPECT_EQ(report["status"], "");
    EXPECT_EQ(report["renamed"], Json::Parse(R"([["a.htm", "a.html"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "", "x"})["messages"],
              Json::Parse(R"(["Fill in find field, please"])"));
    EXPECT_EQ(NamesIn("site"), (Texts{"a.html"}));
}

TEST_F(NameCommands, WithoutDirTheCurrentDirectoryIsMeant)
{
    const std::filesystem::path old = std::filesystem::current_path();
    Put("site/a.htm", "");
    std::filesystem::current_path(Native("site"));
    EXPECT_EQ(Report({"rename", "a", "b"})["renamed"], Json::Parse(R"([["a.htm", "b.htm"]])"));
    EXPECT_EQ(Report({"rename", "--dry-run", "b", "c"})["renamed"],
              Json::Parse(R"([["b.htm", "c.htm"]])"));
    std::filesystem::current_path(Native("."));
    EXPECT_EQ(Report({"rename", "./site/", "b", "d"})["renamed"],
              Json::Parse(R"([["b.htm", "d.htm"]])"));
    std::filesystem::current_path(old);
    EXPECT_EQ(NamesIn("site"), (Texts{"d.htm"}));
}

TEST_F(NameCommands, NamesOutsideTheCodePage)
{
    Put("site/\xE4\xB8\xAD \xC3\x89.jpg", "1");
    const Json report = Report({"fix-names", "C:\\site"});
    EXPECT_EQ(report["renamed"],
              Json::Parse("[[\"&#20013; \xC3\x89.jpg\", \"-20013--\xC3\xA9.jpg\"]]"));
    EXPECT_EQ(Content("site/-20013--\xC3\xA9.jpg"), "1");
    EXPECT_EQ(Call({"undo-renames", "C:\\site", "--report", Keep(report.Dump())}).code, 0);
    EXPECT_EQ(NamesIn("site"), (Texts{"\xE4\xB8\xAD \xC3\x89.jpg"}));
}

TEST_F(NameCommands, CharactersOutsideTheCodePageSurviveARenaming)
{
    std::string many; // 240 bytes, 640 as references
    for (int i = 0; i < 80; ++i)
        many += "\xE4\xB8\xAD";
    Put("site/" + many + ".gif", "1");
    const std::string report = Keep(Call({"--json", "thumb-names", "C:\\site"}).out);
    EXPECT_EQ(NamesIn("site"), (Texts{many + "_t.gif"}));
    EXPECT_EQ(Call({"rename", "C:\\site", "_t", "\xE5", "--dry-run"}).code, 0);
    EXPECT_EQ(Call({"undo-renames", "C:\\site", "--report", report}).code, 0);
    EXPECT_EQ(NamesIn("site"), (Texts{many + ".gif"}));
    EXPECT_EQ(Content("site/" + many + ".gif"), "1");
}

TEST_F(NameCommands, ADryRunTellsWhatWouldStopTheRun)
{
    Put("site/a 1", "");
    Put("site/b 1", "");
    Put("site/B-1", "");
    Put("site/c 1", "");
    const Printed dry = Call({"fix-names", "--dry-run", "C:\\site"});
    EXPECT_EQ(dry.code, 1);
    EXPECT_EQ(dry.out, "a 1 -> a-1\n");
    EXPECT_THAT(dry.err, testing::HasSubstr("error: cannot rename C:\\site\\b 1 to C:\\site\\b-1: "
                                            "target exists"));
    const Printed real = Call({"fix-names", "C:\\site"});
    EXPECT_EQ(real.code, 1);
    EXPECT_EQ(real.out, "");
    EXPECT_EQ(real.err, dry.err);
    EXPECT_EQ(NamesIn("site"), (Texts{"B-1", "a-1", "b 1", "c 1"}));
}

TEST_F(NameCommands, AReportTakesItsRenamesBack)
{
    const Texts names = {"B c.TXT", "PHOTO.JPG", "\xC3\x89 1.htm"};
    for (const std::string& name : names)
        Put("site/" + name, name);
    const std::string report = Keep(Call({"--json", "fix-names", "C:\\site"}).out);
    EXPECT_EQ(NamesIn("site"), (Texts{"b-c.txt", "photo.jpg", "\xC3\xA9-1.htm"}));
    const Json undone = Report({"undo-renames", "C:\\site", "--report", report});
    EXPECT_EQ(NamesIn("site"), names);
    for (const std::string& name : names)
        EXPECT_EQ(Content("site/" + name), name);
    EXPECT_EQ(undone["renamed"].Size(), 3U);
    // Its own report takes that back again.
    Keep(undone.Dump());
    EXPECT_EQ(Call({"undo-renames", "C:\\site", "--report=" + report}).code, 0);
    EXPECT_EQ(NamesIn("site"), (Texts{"b-c.txt", "photo.jpg", "\xC3\xA9-1.htm"}));
}

TEST_F(NameCommands, TheReportOfAFailedRunIsGoodEnough)
{
    Put("site/a 1", "");
    Put("site/b 1", "");
    Put("site/B-1", "");
    const std::string report = Keep(Call({"--json", "fix-names", "C:\\site"}).out);
    EXPECT_EQ(Call({"undo-renames", "C:\\site", "--report", report}).code, 0);
    EXPECT_EQ(NamesIn("site"), (Texts{"B-1", "a 1", "b 1"}));
}

TEST_F(NameCommands, UndoingNeverOverwrites)
{
    Put("site/a-b", "1");
    Put("site/a b", "2");
    Put("site/c-d", "3");
    const std::string report = Keep(R"({"renamed": [["a b", "a-b"], ["c d", "c-d"]]})");
    const Json undone = Report({"undo-renames", "C:\\site", "--report", report});
    EXPECT_EQ(KindOf(undone), "file");
    EXPECT_EQ(undone["renamed"], Json::Parse(R"([["c-d", "c d"]])"));
    EXPECT_EQ(Content("site/a b"), "2");
    EXPECT_EQ(Content("site/a-b"), "1");
}

TEST_F(NameCommands, WithoutAHomeNothingIsKeptAndThatIsSaid)
{
    Put("site/a 1", "");
    for (const char* const relative : {"", "state", "./state"}) {
        variables["LOCALAPPDATA"] = variables["XDG_STATE_HOME"] = relative;
        EXPECT_THAT(Call({"rename", "C:\\site", "1", "1"}).err, "");
        const std::string err = Call({"rename", "C:\\site", "a", "aa"}).err;
        EXPECT_THAT(err, testing::StartsWith("kiv: The old names are not kept"));
        EXPECT_THAT(err, HasSubstr("(--json > FILE)"));
        EXPECT_EQ(Call({"undo-renames", "C:\\site"}).code, 1);
    }
    variables["XDG_STATE_HOME"] = "state"; // else the home folder counts
    variables["LOCALAPPDATA"] = variables["HOME"] = Native("home").string();
    EXPECT_EQ(Call({"fix-names", "C:\\site"}).err, "");
    EXPECT_TRUE(Exists("home"));
}

#ifndef _WIN32 // where names hold line ends
TEST_F(NameCommands, ANameStaysOnItsLine)
{
    Put("site/a\nkiv: b", "");
    Put("site/z\nz Z", "");
    Put("site/z\nz-z", "");
    EXPECT_EQ(Call({"rename", "C:\\site", "a", "c", "--dry-run"}).out,
              "a\\x0Akiv: b -> c\\x0Akiv: b\n");
    const std::string err = Call({"fix-names", "C:\\site"}).err;
    EXPECT_THAT(err, testing::HasSubstr("error: cannot rename C:\\site\\z\\x0Az Z to "
                                        "C:\\site\\z\\x0Az-z: target exists"));
    EXPECT_THAT(err, testing::Not(testing::HasSubstr("\nz")));
}
#endif

TEST_F(NameCommands, WhatIsNoReport)
{
    Put("site/b", "");
    for (const char* json :
         {"", "{", "[]", "{}", R"({"renamed": {}})", R"({"renamed": [["b"]]})",
          R"({"renamed": [["a", "b"], ["c", 1]]})", R"({"renamed": [["a", "b", "c"]]})"}) {
        const Json report = Report({"undo-renames", "C:\\site", "--report", Keep(json)});
        EXPECT_EQ(KindOf(report), "invalid-argument") << json;
        EXPECT_EQ(report["error"]["where"], "C:\\report.json");
        EXPECT_EQ(NamesIn("site"), (Texts{"b"}));
    }
    EXPECT_EQ(KindOf(Report({"undo-renames", "C:\\site", "--report", "/no/such.json"})), "file");
    EXPECT_EQ(KindOf(Report({"undo-renames", "C:\\site", "--report", "C:\\site"})), "file");
}

TEST_F(NameCommands, UndoingStaysInItsFolder)
{
    Put("site/b", "");
    const std::string report = Keep(R"({"renamed": [["..\\utils\\a", "b"]]})");
    EXPECT_EQ(KindOf(Report({"undo-renames", "C:\\site", "--report", report})), "file");
    EXPECT_EQ(NamesIn("site"), (Texts{"b"}));
    EXPECT_EQ(NamesIn("utils"), (Texts{}));
}

} // namespace
} // namespace kiv
