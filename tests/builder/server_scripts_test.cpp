#include "builder/server_scripts.h"

#include "tests/builder/message_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::HasSubstr;

const Addresses kAddresses{.sender = "fixed@site.org"};

std::string Script(std::string line)
{
    ExpandServerScript(line, kAddresses);
    return line;
}

// The lines of a block with CR LF between them.
std::string Lines(const std::vector<std::string>& lines)
{
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i)
        text += (i == 0 ? "" : "\r\n") + lines[i];
    return text;
}

TEST(ServerScripts, OtherLinesStay)
{
    for (const char* line : {"", "text", "@", "@SHOWDB", "@SHOWDB :a|b", " @SHOWDB:a|b",
                             "x@OPENDB:a", "@SENDEMAILS:a", "@SHOWDB\xD7:", "ASP:@OPENDB:a"})
        EXPECT_EQ(Script(line), line);
}

TEST(ServerScripts, OpenDb)
{
    EXPECT_EQ(Script("@OPENDB:  c:\\data\\my base.mdb "),
              Lines({"<%", "Set conn = Server.CreateObject(\"ADODB.Connection\")",
                     "conn.Provider = \"Microsoft.Jet.OLEDB.4.0\"",
                     "conn.Open \"c:\\data\\my base.mdb\"", "%>"}));
    EXPECT_THAT(Script("@opendb:a|b"), HasSubstr("conn.Open \"a|b\"\r\n"));
    EXPECT_THAT(Script("@OpenDb:"), HasSubstr("conn.Open \"\"\r\n"));
    EXPECT_THAT(Script("@OPENDB:\ta"),
                HasSubstr("conn.Open \"\ta\"\r\n")); // blanks alone are trimmed
}

TEST(ServerScripts, ShowDb)
{
    EXPECT_EQ(Script("@showdb: c:\\a.mdb | People|x "),
              Lines({"<%",
                     "Set conn = Server.CreateObject(\"ADODB.Connection\")",
                     "conn.Provider = \"Microsoft.Jet.OLEDB.4.0\"",
                     "conn.Open \"c:\\a.mdb \"",
                     "set rs=Server.CreateObject(\"ADODB.recordset\")",
                     "sql=\"SELECT * from  People|x;\"",
                     "rs.Open sql, conn",
                     "%>",
                     "<table style=\"font:7pt verdana\" border=1>",
                     "<tr><%for each x in rs.Fields%><th><%=x.name%></th><%next%></tr>",
                     "<%do until rs.EOF%>",
                     "<tr>",
                     "<%for each x in rs.Fields%>",
                     "<td><%Response.Write(x.value)%></td>",
                     "    <%next",
                     "    rs.MoveNext%>",
                     "    </tr>",
                     "  <%loop",
                     "  rs.close",
                     "  conn.close%>",
                     "</table>"}));
}

TEST(ServerScripts, KillRecord)
{
    EXPECT_EQ(
        Script("@KILLRECORD:People|ID"),
        Lines({"<%", "sql = \"DELETE FROM People WHERE ID='ID'\"", "conn.Execute sql", "%>"}));
    // Single quotes are not doubled here, and further fields say nothing.
    EXPECT_EQ(
        Script("@KillRecord:O'N|it's |x"),
        Lines({"<%", "sql = \"DELETE FROM O'N WHERE it's ='it's '\"", "conn.Execute sql", "%>"}));
}

TEST(ServerScripts, FixQuotes)
{
    EXPECT_EQ(
        Script("@FIXQUOTES:a|b"),
        Lines({"<%", "a=Replace(a, \"\"\"\", \"&quot;\")", "a=Replace(a, \"'\", \"''\")",
               "b=Replace(b, \"\"\"\", \"&quot;\")", "b=Replace(b, \"'\", \"''\")", "", "%>"}));
    EXPECT_EQ(Script("@fixquotes:"), Lines({"<%", "", "%>"})); // no variables
    EXPECT_EQ(Script("@FIXQUOTES:|"),
              Lines({"<%", "=Replace(, \"\"\"\", \"&quot;\")", "=Replace(, \"'\", \"''\")",
                     "=Replace(, \"\"\"\", \"&quot;\")", "=Replace(, \"'\", \"''\")", "", "%>"}));
}

TEST(ServerScripts, SendEmailFromAVariable)
{
    const std::string reply_to = "myMail.value(\"Reply-To\")=email";
    EXPECT_EQ(Script("@SENDEMAIL:Say \"hi\"|email|a@b.c,d@e.f|messageout"),
              Lines({"<%", "Set myMail=CreateObject(\"Cdonts.newMail\")",
                     "myMail.Subject=spam & \"Say \"\"hi\"\"\"", "myMail.From=\"fixed@site.org\"",
                     "if instr(email,\"@\")>0 and instr(email, \" \")=0 then " + reply_to,
                     "myMail.To=\"a@b.c\"", "myMail.cc=\"d@e.f\"", "myMail.Body=messageout",
                     "myMail.Send", "Set myMail = Nothing", "%>"}));
}

TEST(ServerScripts, SendEmailFromAnAddress)
{
    EXPECT_EQ(
        Script("@SENDEMAIL:Subject|me@x.y|whom|It is \"so\"|more"),
        Lines({"<%", "Set myMail=CreateObject(\"Cdonts.newMail\")",
               "myMail.Subject=spam & \"Subject\"", "myMail.From=\"me@x.y\"", "myMail.To=whom",
               "myMail.Body=\"It is \"\"so\"\"\"", "myMail.Send", "Set myMail = Nothing", "%>"}));
}

TEST(ServerScripts, SendEmailWithTheNewerObject)
{
    EXPECT_EQ(Script("@ssendemail:S|v|a@b.c|two words"),
              Lines({"<%", "Set myMail=CreateObject(\"CDO.Message\")",
                     "myMail.Subject=spam & \"S\"", "myMail.From=\"fixed@site.org\"",
                     "if instr(v,\"@\")>0 and instr(v, \" \")=0 then myMail.ReplyTo=v",
                     "myMail.To=\"a@b.c\"", "myMail.TextBody=\"two words\"", "myMail.Send",
                     "Set myMail = Nothing", "%>"}));
}

TEST(ServerScripts, SendEmailReceivers)
{
    const struct {
        const char* to;
        const char* lines;
        const char* why;
    } kRows[] = {
        {"a@b.c", "myMail.To=\"a@b.c\"\r\n", "an address"},
        {"who", "myMail.To=who\r\n", "a variable"},
        {"", "myMail.To=\r\n", "nothing"},
        {"a@b.c,", "myMail.To=\"a@b.c\"\r\n", "no cc line"},
        {",x", "myMail.To=\r\nmyMail.cc=x\r\n", "empty to"},
        {",x@y", "myMail.To=\r\nmyMail.cc=\"x@y\"\r\n", "empty to"},
        {"a@b.c,who", "myMail.To=\"a@b.c\"\r\nmyMail.cc=who\r\n", "each is tested on its own"},
        {"who,a@b.c", "myMail.To=who\r\nmyMail.cc=\"a@b.c\"\r\n", "each is tested on its own"},
        {"a@b, c@d,e", "myMail.To=\"a@b\"\r\nmyMail.cc=\" c@d,e\"\r\n", "the first comma parts"},
    };
    for (const auto& row : kRows)
        EXPECT_THAT(Script(std::string("@SENDEMAIL:s|f@g|") + row.to + "|m"),
                    HasSubstr(std::string("myMail.From=\"f@g\"\r\n") + row.lines + "myMail.Body=m"))
            << row.why;
}

TEST(ServerScripts, SendEmailTexts)
{
    // A message of one word is a variable, whatever else it holds; quotes are doubled in literals
    // only.
    EXPECT_THAT(Script("@SENDEMAIL:s|f@g|t|a\"b"), HasSubstr("myMail.Body=a\"b\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:s|f@g|t|"), HasSubstr("myMail.Body=\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:s|f@g|t| m|"), HasSubstr("myMail.Body=\" m\"\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:s|f@g|t|m "), HasSubstr("myMail.Body=m\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:|f@g|t|m"), HasSubstr("spam & \"\"\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:s |f@g|t|m"), HasSubstr("spam & \"s \"\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:s|\"f\"@g|t|m"), HasSubstr("myMail.From=\"\"f\"@g\"\r\n"));
    EXPECT_THAT(Script("@SENDEMAIL:s||t|m"),
                HasSubstr("if instr(,\"@\")>0 and instr(, \" \")=0 then "
                          "myMail.value(\"Reply-To\")=\r\n"));
}

TEST(ServerScripts, DbInsert)
{
    const auto insert = [](const std::string& sql) {
        return Lines({"<%", sql, "conn.Execute sql,recaffected",
                      "sql = \"SELECT @@IDENTITY AS NewID\"", "Set loRs = conn.Execute(sql)",
                      "hotID = loRs.Fields(\"NewID\").value", "conn.Close", "%>"});
    };
    const struct {
        const char* argument;
        const char* sql;
    } kRows[] = {
        {"People|name|*age|town",
         R"~(sql = "INSERT INTO [People] ([name],[age],[town]) VALUES(" & )~"
         R"~("'" & name & "'," & age & "," & "'" & town & "')")~"},
        {"T|*a|*b", R"~(sql = "INSERT INTO [T] ([a],[b]) VALUES(" & a & "," & b & ")")~"},
        {"T|a", R"~(sql = "INSERT INTO [T] ([a]) VALUES(" & "'" & a & "')")~"},
        {"T|*a", R"~(sql = "INSERT INTO [T] ([a]) VALUES(" & a & ")")~"},
        {"T|**a", R"~(sql = "INSERT INTO [T] ([*a]) VALUES(" & *a & ")")~"},
        // With the table alone its name stands for the one column.
        {"T", R"~(sql = "INSERT INTO [T] ([T]) VALUES(" & "'" & T & "')")~"},
        // The star of the table means nothing; single quotes are doubled everywhere.
        {"*O'N|d'a", R"~(sql = "INSERT INTO [*O''N] ([d''a]) VALUES(" & "'" & d''a & "')")~"},
        // An empty field is a quoted empty name.
        {"T|", R"~(sql = "INSERT INTO [T] ([]) VALUES(" & "'" &  & "')")~"},
        {"T||*", R"~(sql = "INSERT INTO [T] ([],[]) VALUES(" & "'" &  & "'," &  & ")")~"},
        {"T| a ", R"~(sql = "INSERT INTO [T] ([ a]) VALUES(" & "'" &  a & "')")~"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Script(std::string("@DbInsert: ") + row.argument), insert(row.sql));
}

TEST(ServerScripts, DbUpdate)
{
    const struct {
        const char* argument;
        const char* sql;
    } kRows[] = {
        {"People|ID|name|*age",
         R"~(sql = "UPDATE [People] SET [name]='" & name & "',[age]=" & age & " )~"
         R"~(WHERE [ID]='" & ID & "'")~"},
        {"T|*id|*a|b",
         R"~(sql = "UPDATE [T] SET [a]=" & a & ",[b]='" & b & "' WHERE [id]=" & id)~"},
        {"T|id", R"~(sql = "UPDATE [T] SET  WHERE [id]='" & id & "'")~"},
        {"*T'|i'd|a'",
         R"~(sql = "UPDATE [*T''] SET [a'']='" & a'' & "' WHERE [i''d]='" & i''d & "'")~"},
        {"T|id|", R"~(sql = "UPDATE [T] SET []='" &  & "' WHERE [id]='" & id & "'")~"},
        {"T||", R"~(sql = "UPDATE [T] SET []='" &  & "' WHERE []='" &  & "'")~"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Script(std::string("@DBUPDATE:") + row.argument),
                  Lines({"<%", row.sql, "conn.Execute sql", "conn.Close", "%>"}));
}

const char* const kRteSafe[] = {
    "function RTESafe(strText)",
    "    'returns safe code for outputting to the browser",
    "    dim tmpString",
    "    tmpString = trim(strText)",
    "    'convert single quotes",
    "    tmpString = replace(tmpString, chr(145), chr(39))",
    "    tmpString = replace(tmpString, chr(146), chr(39))",
    "    tmpString = replace(tmpString, \"'\", \"&#39;\")",
    "    'convert double quotes",
    "    tmpString = replace(tmpString, chr(34), \"&quot;\")",
    "    tmpString = replace(tmpString, chr(147), \"&quot;\")",
    "    tmpString = replace(tmpString, chr(148), \"&quot;\")",
    "    'replace less-thans and greater-thans",
    "    tmpString = replace(tmpString, \"<\", \"&lt;\")",
    "    tmpString = replace(tmpString, \">\", \"&gt;\")",
    "    RTESafe = tmpString",
    "end function",
};

// A form block whose lines before the function are `head`.
std::string FormBlock(std::vector<std::string> head)
{
    head.insert(head.end(), std::begin(kRteSafe), std::end(kRteSafe));
    head.emplace_back("");
    head.emplace_back("%>");
    return Lines(head);
}

TEST(ServerScripts, FormRead)
{
    EXPECT_EQ(Script("@FormRead: name|referrer|email "),
              FormBlock({"<%", "name=trim(Request.Form(\"name\"))",
                         "referrer=trim(Request.Form(\"referrer\"))",
                         "email=trim(Request.Form(\"email\"))", "",
                         "email = replace(email, \" \", \"\")", "", "safename = RTESafe(name)",
                         "safereferrer = RTESafe(referrer)", "safeemail = RTESafe(email)", "",
                         "messageout=\"************************\" + vbCrLf",
                         "messageout=messageout + \"name: \" + name + vbcrlf",
                         "messageout=messageout + \"referrer: \" + referrer + vbcrlf",
                         "messageout=messageout + \"email: \" + email + vbcrlf", "",
                         "if name=\"\" and email=\"\"  then imempty=\"yes\"", ""}));
}

TEST(ServerScripts, FormReadWithoutVariables)
{
    EXPECT_EQ(Script("@FORMREAD:"),
              FormBlock({"<%", "", "email = replace(email, \" \", \"\")", "", "",
                         "messageout=\"************************\" + vbCrLf", "",
                         "if  then imempty=\"yes\"", ""}));
}

TEST(ServerScripts, FormReadTest)
{
    EXPECT_THAT(Script("@FORMREAD:referrer"), HasSubstr("\r\nif  then imempty=\"yes\"\r\n\r\n"));
    EXPECT_THAT(Script("@FORMREAD:referrer|a"), HasSubstr("\r\nif a=\"\"  then imempty"));
    EXPECT_THAT(Script("@FORMREAD:Referrer"), HasSubstr("\r\nif Referrer=\"\"  then imempty"));
    EXPECT_THAT(Script("@FORMREAD:a|| b"),
                HasSubstr("\r\nif a=\"\" and =\"\" and  b=\"\"  then imempty"));
}

TEST(ServerScripts, MissingPartsAreFatal)
{
    const struct {
        const char* line;
        ErrorKind kind;
        const char* names;
    } kRows[] = {
        {"@SHOWDB:", ErrorKind::invalid_argument, "@SHOWDB:"},
        {"@SHOWDB:base.mdb", ErrorKind::invalid_argument, "@SHOWDB:"},
        {"@SENDEMAIL:", ErrorKind::subscript, "@SENDEMAIL:"},
        {"@SENDEMAIL:a|b|c", ErrorKind::subscript, "@SENDEMAIL:"},
        {"@SSENDEMAIL:a|b|c", ErrorKind::subscript, "@SSENDEMAIL:"},
        {"@KILLRECORD:", ErrorKind::subscript, "@KILLRECORD:"},
        {"@KILLRECORD:a", ErrorKind::subscript, "@KILLRECORD:"},
        {"@DBINSERT:", ErrorKind::subscript, "@DBINSERT:"},
        {"@DBINSERT:  ", ErrorKind::subscript, "@DBINSERT:"},
        {"@DBUPDATE:", ErrorKind::subscript, "@DBUPDATE:"},
        {"@DBUPDATE:a", ErrorKind::subscript, "@DBUPDATE:"},
    };
    for (const auto& row : kRows) {
        const std::optional<RunError> error = FatalError([&] { Script(row.line); });
        ASSERT_TRUE(error.has_value()) << row.line;
        EXPECT_EQ(KindName(error->kind), KindName(row.kind)) << row.line;
        EXPECT_THAT(error->text, HasSubstr(row.names));
    }
}

} // namespace
} // namespace kiv
