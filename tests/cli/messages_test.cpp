// Warnings and errors with their places: what is shown of paths, texts and source lines.
#include "cli/message_printer.h"
#include "cli/quoted_line.h"
#include "cli_desk.h"
#include "tests/support/memory_drives.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class Messages : public CliTest {
  protected:
    Messages()
    {
        PutList("!!mailto[x\n");
        for (const char* const below : {"site/_template.txt", "sit/a.txt", "other/a.txt"})
            Put(below, ";\n");
    }

    /// A page list with one page, whose text begins in line 3.
    void PutList(const std::string& text)
    {
        Put("site/_html.txt", "@FILE = a\n@TITLE = A\n" + text);
    }

    /// What a build of the site tells to a shell in a folder below drive C:.
    std::string ToldIn(const std::string& below)
    {
        shell_folder = Native(below).string();
        return Call({"build", "C:\\site"}).err;
    }
};

TEST_F(Messages, PathsAreAsTheShellSeesThem)
{
    const std::string rest = ":3: warning: Missing closed bracket: x (page a.htm)\n"
                             "    !!mailto[x\n";
    const std::string absolute = NativeOf("site/_html.txt");
    const std::string below = std::filesystem::path("site/_html.txt").make_preferred().string();
    for (const auto& [folder, path] : std::map<std::string, std::string>{{"", below},
                                                                         {"site", "_html.txt"},
                                                                         {"sit", absolute},
                                                                         {"other", absolute},
                                                                         {"site/gone", absolute}})
        EXPECT_EQ(ToldIn(folder), path + rest) << folder;
}

#ifndef _WIN32 // where Z: is a drive like any other
TEST_F(Messages, OfTheRootFolderPathsAreTheSame)
{
    variables["XDG_DATA_HOME"] = Native("data").string();
    shell_folder = Root().string();
    for (const std::string& site : {Native("site").string(), "Z:" + Native("site").string()})
        EXPECT_THAT(CallBare({"build", site}).err,
                    testing::StartsWith("site/_html.txt:3: warning: "));
    shell_folder = "/";
    EXPECT_THAT(CallBare({"build", Native("site").string()}).err,
                testing::StartsWith(Native("site/_html.txt").string().substr(1) + ":3: "));
}
#endif

TEST_F(Messages, ColoursAreForTerminals)
{
    const auto told = [&](bool is_terminal, const char* no_colour) {
        err_is_terminal = is_terminal;
        variables.erase("NO_COLOR");
        if (no_colour != nullptr)
            variables["NO_COLOR"] = no_colour;
        return ToldIn("site");
    };
    const std::string plain = "_html.txt:3: warning: Missing closed bracket: x (page a.htm)\n"
                              "    !!mailto[x\n";
    const std::string coloured = "_html.txt:3: \x1b[1;33mwarning:\x1b[0m Missing closed bracket: "
                                 "x (page a.htm)\n    !!mailto[x\n";
    EXPECT_EQ(told(false, nullptr), plain);
    EXPECT_EQ(told(true, nullptr), coloured);
    EXPECT_EQ(told(true, ""), coloured);
    EXPECT_EQ(told(true, "1"), plain);
    PutList("!!pop[]\n");
    EXPECT_THAT(told(true, nullptr), HasSubstr("_html.txt:3: \x1b[1;31merror:\x1b[0m field 1 of"));
}

std::size_t CountOf(const std::string& word, std::string_view text)
{
    return Split(text, word).size() - 1;
}

TEST_F(Messages, FiftyWarningsAreTold)
{
    struct Row {
        int warnings;
        std::string rest;
    };
    for (const Row& row : {Row{50, ""}, Row{51, "kiv: 1 more warning (--verbose tells it)\n"},
                           Row{53, "kiv: 3 more warnings (--verbose tells them all)\n"}}) {
        std::string text;
        for (int i = 1; i <= row.warnings; ++i)
            text += "!!mailto[" + Decimal(i) + "\n";
        PutList(text);
        const std::string told = ToldIn("site");
        EXPECT_EQ(CountOf(" warning: ", told), 50U);
        EXPECT_THAT(told, EndsWith("    !!mailto[50\n" + row.rest));
        const Printed verbose = Call({"--verbose", "build", "C:\\site"});
        EXPECT_EQ(CountOf(" warning: ", verbose.err), static_cast<std::size_t>(row.warnings));
        EXPECT_EQ(CountOf("more warning", verbose.err), 0U);
    }
}

TEST_F(Messages, OfEveryByteTheReportIsValidAndNoneSteersTheTerminal)
{
    std::string text;
    std::size_t lines = 0;
    for (int code = 0; code < 256; ++code) {
        const auto byte = static_cast<char>(static_cast<unsigned char>(code));
        if (byte == '\n' || byte == ']') // ends the line, closes the bracket
            continue;
        text.append("$$9[").append(1, byte).append("x\n");
        ++lines;
    }
    PutList(text);
    const Json warnings = Report({"build", "C:\\site"})["warnings"];
    ASSERT_EQ(warnings.Size(), lines);
    EXPECT_EQ(warnings[0]["text"].Text(), std::string("Missing closed bracket: \0x", 26));
    EXPECT_EQ(warnings[lines - 1]["text"].Text(), "Missing closed bracket: \xC3\xBFx");
    const std::string told = Call({"--verbose", "build", "C:\\site"}).err;
    EXPECT_EQ(CountOf("\n", told), 2 * lines);
    for (const char c : told)
        EXPECT_TRUE(c == '\n' || c == '\t' || static_cast<unsigned char>(c) >= ' ') << int{c};
    for (const char* const shown : {"\\x00", "\\x07", "\\x0D", "\\x1B", "\\x7F", "\\x81"})
        EXPECT_THAT(told, HasSubstr("Missing closed bracket: " + std::string(shown) + "x"));
}

/// A printer whose drives lie in memory; C: is "/c", the shell stands in "/c/site".
class Printer : public testing::Test {
  protected:
    std::string Told(const RunError& error)
    {
        std::ostringstream err;
        MessagePrinter(err, drives, look).Print(error);
        return err.str();
    }
    std::string Told(const std::string& text, const Place& where)
    {
        std::ostringstream err;
        MessagePrinter(err, drives, look).Print(Warning{text, where});
        return err.str();
    }

    test::MemoryDrives drives;
    MessageLook look{.folder = "/c/site"};
};

TEST_F(Printer, EveryPartOfAPlaceMayBeMissing)
{
    drives.Put("site/a.txt", "one\r\n \t\r\nthree");
    drives.Put("b.txt", "b\n");
    struct Row {
        Place where;
        std::string told;
    };
    for (const Row& row : {
             Row{{}, "kiv: T\n"},
             Row{{"", 0, "p.htm"}, "kiv: T (page p.htm)\n"},
             Row{{"C:\\site\\a.txt"}, "a.txt: warning: T\n"},
             Row{{"C:\\site\\a.txt", 1}, "a.txt:1: warning: T\n    one\n"},
             Row{{"C:\\site\\a.txt", 2}, "a.txt:2: warning: T\n"}, // nothing to be seen
             Row{{"C:\\site\\a.txt", 3, "p.htm"}, "a.txt:3: warning: T (page p.htm)\n    three\n"},
             Row{{"C:\\site\\a.txt", 4}, "a.txt:4: warning: T\n"}, // not there any more
             Row{{"C:\\site\\gone.txt", 1}, "gone.txt:1: warning: T\n"},
             Row{{"C:\\site\\no\\a.txt", 1}, "no/a.txt:1: warning: T\n"},
             Row{{"C:\\b.txt", 1}, "/c/b.txt:1: warning: T\n    b\n"},
             Row{{"Q:\\b.txt", 1}, "Q:\\b.txt:1: warning: T\n"},
         })
        EXPECT_EQ(Told("T", row.where), row.told);
    look.is_build = true;
    EXPECT_EQ(Told("T", {}), "kiv: warning: T\n");
}

TEST_F(Printer, HostileNamesAndTextsAreShown)
{
    drives.Put("site/\x1b[2J\n.txt", "\x9b\x31m\x07 line\r\n");
    EXPECT_EQ(Told("a\x1b]0;t\x07\r\nb\rc\r\n\r\n", {"C:\\site\\\x1b[2J\n.txt", 1, "p\n\x7f"}),
              "\\x1B[2J\\x0A.txt:1: warning: a\\x1B]0;t\\x07\n"
              "  b\\x0Dc (page p\\x0A\\x7F)\n"
              "    \xE2\x80\xBA"
              "1m\\x07 line\n");
    EXPECT_EQ(Told("", {}), "kiv: \n");
}

TEST_F(Printer, AnErrorSaysWhatCanBeDone)
{
    drives.Put("site/a.txt", "one\n");
    EXPECT_EQ(Told(RunError(ErrorKind::file, "no\nfile", {"C:\\site\\a.txt", 1}, "Make it.")),
              "a.txt:1: error: no\\x0A"
              "file\n    one\n    -> Make it.\n");
    EXPECT_EQ(Told(RunError(ErrorKind::file, "no file")), "kiv: error: no file\n");
}

TEST_F(Printer, ALongTextIsCutUnlessAllIsAskedFor)
{
    const std::string text(1001, 'x');
    EXPECT_EQ(Told(text, {}), "kiv: " + std::string(1000, 'x') + "...\n");
    EXPECT_EQ(Told(text.substr(1), {}), "kiv: " + std::string(1000, 'x') + "\n");
    look.tells_all = true;
    EXPECT_EQ(Told(text, {}), "kiv: " + text + "\n");
}

TEST_F(Printer, FilesAreReadOnceAndWithinBounds)
{
    const std::string half(std::size_t{20} << 20U, '\n');
    drives.Put("site/large.txt", std::string(std::size_t{33} << 20U, 'x'));
    drives.Put("site/first.txt", "one\n" + half);
    drives.Put("site/second.txt", "two\n" + half);
    std::ostringstream err;
    MessagePrinter printer(err, drives, look);
    for (const char* const name : {"large", "first", "second", "first"})
        printer.Print(Warning{"T", Place{"C:\\site\\" + std::string(name) + ".txt", 1}});
    drives.Put("site/first.txt", "another\n");
    printer.Print(Warning{"T", Place{"C:\\site\\first.txt", 1}});
    EXPECT_EQ(err.str(), "large.txt:1: warning: T\n"
                         "first.txt:1: warning: T\n    one\n"
                         "second.txt:1: warning: T\n"
                         "first.txt:1: warning: T\n    one\n"
                         "first.txt:1: warning: T\n    one\n");
}

TEST(QuotedLine, IsCutAroundWhatTheMessageSpeaksOf)
{
    const std::string a(300, 'a');
    const std::string b(300, 'b');
    const std::string whole(100, 'c');
    struct Row {
        std::string line;
        std::string message;
        std::string quoted;
    };
    for (const Row& row : {
             Row{"short", "anything", "short"},
             Row{whole, "anything", whole},
             Row{a, "anything", a.substr(0, 100) + "..."},
             Row{a + "SPOT" + b, "The page \"SPOT\" is old",
                 "..." + a.substr(0, 30) + "SPOT" + b.substr(0, 66) + "..."},
             Row{a + "SPOT" + b, "Missing: SPOT",
                 "..." + a.substr(0, 30) + "SPOT" + b.substr(0, 66) + "..."},
             Row{a + "SPOT" + b, "SPOT\r\nis what it says",
                 "..." + a.substr(0, 30) + "SPOT" + b.substr(0, 66) + "..."},
             Row{"SPOT" + b, "Missing: SPOT", "SPOT" + b.substr(0, 96) + "..."},
             Row{a + "SPOT", "Missing: SPOT", "..." + a.substr(0, 96) + "SPOT"},
             Row{a + b, "Missing: \"\" and: ", a.substr(0, 100) + "..."},
             // Only the beginning of a quotation is looked for.
             Row{a + std::string(40, 'S') + b, "Missing: " + std::string(40, 'S') + "more",
                 "..." + a.substr(0, 30) + std::string(40, 'S') + b.substr(0, 30) + "..."},
         })
        EXPECT_EQ(QuotedLine(row.line, row.message), row.quoted) << row.message;
}

} // namespace
} // namespace kiv
