// Conversions, dimensions and the quick reference.
#include "cli_desk.h"

#include "shell/help_text.h"

namespace kiv {
namespace {

using testing::HasSubstr;
using TextCommands = CliTest;

using Texts = std::vector<std::string>;

struct ConvertRow {
    Texts options;
    std::string in;
    std::string out;
};

TEST_F(TextCommands, Conversions)
{
    const std::vector<ConvertRow> rows = {
        {{}, "a\nb", "<p> a b</p>\r\n"},
        {{}, "", "<p></p>\r\n"},
        {{"--links-list"}, "a", "a\r\n"},
        {{"--single-spaced"}, "a", "<p><p>a</p>\r\n</p>\r\n"},
        {{"--poetry-p"}, "a\nb\n\nc\nd", "<p>a<br>b</p>\r\n<p>c<br>d</p>\r\n"},
        {{"--poetry-br"}, "a\nb\n\nc", "<p>a<br>b<br><br>c</p>\r\n"},
        {{"--mode", "rs"}, "a\tb", "a=rs(\"a\")\r\n\tb=rs(\"b\")\r\n"},
        {{"--mode", "rs"}, "", ""},
        {{"--mode", "cleanquotes"}, "\xE2\x80\x98x\xE2\x80\x99", "'x'\r\n"},
        {{"--mode", "cleanquotes", "--keep-smart-quotes"}, "\xE2\x80\x98x", "&lsquo;x\r\n"},
        {{"--mode", "tabtopipe", "--prefix", "!!1"},
         "a\tb",
         "<table width=\"100%\">\r\n!!1[a|b]\r\n</table>"},
        {{"--mode", "ptop"}, "a<P>\r\nb<p>\nc<p>", "a</p>\r\nb</p>\nc</p>"},
        {{"--mode", "ptop"}, "", ""},
        // A box that a mode does not read has no effect.
        {{"--mode", "ptop", "--links-list", "--prefix", "x"}, "a", "a"},
    };
    for (const ConvertRow& row : rows) {
        input = row.in;
        Texts call = {"convert"};
        call.insert(call.end(), row.options.begin(), row.options.end());
        const Printed printed = Call(call);
        EXPECT_EQ(printed.code, 0) << testing::PrintToString(row.options);
        EXPECT_EQ(printed.out, row.out) << testing::PrintToString(row.options) << row.in;
        EXPECT_EQ(printed.err, "");
    }
}

TEST_F(TextCommands, StandardInputIsUtf8)
{
    input = "caf\xC3\xA9 \xE4\xB8\xAD \xE9 \xC2\x81"; // the third is no UTF-8
    EXPECT_EQ(Call({"convert", "--mode", "ptop"}).out, "caf\xC3\xA9 &#20013; \xC3\xA9 \xC2\x81");
    input = "\xEF\xBB\xBFx";
    EXPECT_EQ(Call({"convert", "--mode", "ptop"}).out, "&#65279;x");
    input = "a\tb";
    EXPECT_EQ(Call({"convert", "--mode", "tabtopipe", "--prefix", "\xC3\xA9\xE4\xB8\xAD"}).out,
              "<table width=\"100%\">\r\n\xC3\xA9&#20013;[a|b]\r\n</table>");
}

TEST_F(TextCommands, ReportsOfConversions)
{
    input = "a\xC3\xA9";
    const Json report = Report({"convert", "--links-list"});
    EXPECT_EQ(report["result"], "a&eacute;\r\n");
    EXPECT_EQ(report["status"], "");
    EXPECT_EQ(report["files"], Json::Parse(R"(["C:\\$$$x.txt"])"));
    EXPECT_FALSE(Exists("$$$x.txt"));
}

TEST_F(TextCommands, ARefusedTextHasAnEmptyResult)
{
    input = "no news";
    const Json report = Report({"convert", "--mode", "newsgrabber"});
    EXPECT_EQ(report["result"], "");
    EXPECT_EQ(report["messages"], Json::Parse(R"(["First line doesn't start '!!'"])"));
    const Printed printed = Call({"convert", "--mode", "newsgrabber"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "kiv: First line doesn't start '!!'\n");
}

TEST_F(TextCommands, AFailedConversionHasNoResult)
{
    input = "name=x";
    const Json report = Report({"convert", "--mode", "getnames"});
    EXPECT_EQ(KindOf(report), "invalid-argument");
    EXPECT_THAT(report.Keys(), testing::Not(testing::Contains("result")));
    input = "!!1[a|b";
    EXPECT_EQ(KindOf(Report({"convert", "--mode", "newsgrabber"})), "subscript");
}

TEST_F(TextCommands, TheRecipientIsConfigured)
{
    Put("utils/kivaddr.ini", "recipient|me@example.org\r\n");
    input = "<input name=\"a\">";
    EXPECT_THAT(Call({"convert", "--mode", "getnames"}).out,
                HasSubstr("@SENDEMAIL:Subject|email|me@example.org|messageout\r\n"));
}

struct DimensionRow {
    Texts fields;
    const char* out;
};

TEST_F(TextCommands, Dimensions)
{
    const std::vector<DimensionRow> rows = {
        {{"800", "600", "400", ""}, "400 300"},
        {{"800", "600", "", "200"}, "266.666666666667 200"},
        {{"800", "600", "400", "1"}, "400 300"},
        {{"800", "600", "640px", ""}, "640px 480"}, // as it was given
        {{"800", "600", "", ""}, "0 "},
        {{"-800", "600", "400", ""}, "400 -300"},
    };
    for (const DimensionRow& row : rows) {
        Texts call = {"dimensions"};
        call.insert(call.end(), row.fields.begin(), row.fields.end());
        EXPECT_EQ(Call(call).out, row.out);
        EXPECT_EQ(Report(call)["result"], row.out);
    }
    const Printed refused = Call({"dimensions", "0", "600", "400", ""});
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(KindOf(Report({"dimensions", "1e308", "1e308", "1e308", ""})), "overflow");
}

TEST_F(TextCommands, Reference)
{
    const std::vector<std::string> sections = {show1(), show2(), show3(), show4()};
    for (std::size_t i = 0; i < sections.size(); ++i) {
        EXPECT_EQ(Call({"reference", std::to_string(i + 1)}).out, sections[i]);
        EXPECT_EQ(Report({"reference", std::to_string(i + 1)})["result"], sections[i]);
    }
    EXPECT_EQ(CallBare({"reference", "1"}).code, 0);
}

} // namespace
} // namespace kiv
