// The example site's script runs in a script host, with stand-ins for what a server would give.
#include "tests/server_scripts/server_copy.h"
#include "tests/support/folders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

/// The script of a page alone; "<%=x%>" becomes what it stands for.
std::string ScriptOf(std::string_view page)
{
    std::string script;
    for (std::size_t at = page.find("<%"); at != std::string_view::npos; at = page.find("<%", at)) {
        const std::size_t end = page.find("%>", at);
        std::string_view block = page.substr(at + 2, end - at - 2);
        if (block.starts_with('=')) {
            block.remove_prefix(1);
            script += "Response.Write(" + std::string(block) + ")\r\n";
        } else {
            script += std::string(block) + "\r\n";
        }
        at = end;
    }
    return script;
}

std::string Replaced(std::string text, std::string_view what, std::string_view by)
{
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

/// What the host says while it runs the script; CR LF as LF.
std::string Output(const std::string& script)
{
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "page.vbs", script);
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path()); // a host takes a path that begins with "/" for a switch
    static_cast<void>(std::system(KIV_SCRIPT_HOST " //nologo page.vbs > said.txt"));
    fs::current_path(before);
    return Replaced(ReadBytes(folder.Path() / "said.txt"), "\r\n", "\n");
}

/// Nothing but the mark when the host can read all of the script, which it does before it starts.
std::string WhatIsRead(const std::string& script)
{
    return Output("WScript.Echo \"read\"\r\nWScript.Quit\r\n" + script);
}

std::string WhatRuns(std::string script)
{
    script =
        Replaced(script, "conn.Execute sql,recaffected", "conn.ExecuteCounting sql,recaffected");
    script = Replaced(script, "myMail.To=", "myMail.Receiver=");
    return Output(ReadBytes(KIV_STAND_INS) + script + "WScript.Echo \"end\"\r\n");
}

TEST(ScriptHost, ReadsEveryPage)
{
    for (const auto& [name, bytes] : ServerCopy())
        if (name.ends_with(".asp")) {
            EXPECT_EQ(WhatIsRead(ScriptOf(bytes)), "read\n") << name;
        }
    EXPECT_EQ(WhatIsRead("if a then\r\n").find("read"), std::string::npos) << "a fault goes unseen";
}

TEST(ScriptHost, ShowsATable)
{
    EXPECT_EQ(WhatRuns(ScriptOf(ServerCopy().at("guestbook.asp"))),
              "open Microsoft.Jet.OLEDB.4.0: c:\\data\\museum.mdb\n"
              "open records: SELECT * from guestbook;\n"
              "write: name\n"
              "write: town\n"
              "write: name1\n"
              "write: town1\n"
              "write: name2\n"
              "write: town2\n"
              "close records\n"
              "close\n"
              "write: query t\n" // the form's hidden field
              "end\n");
}

TEST(ScriptHost, ReadsAFormStoresItAndSendsAMail)
{
    EXPECT_EQ(WhatRuns(ScriptOf(ServerCopy().at("guestbook-thanks.asp"))),
              "write: &lt;visitor&#39;s &quot;x&quot;&gt;\n"
              "write:  of &lt;town&#39;s &quot;x&quot;&gt;\n"
              "open Microsoft.Jet.OLEDB.4.0: c:\\data\\museum.mdb\n"
              "execute: INSERT INTO [guestbook] ([visitor],[town],[party],[comments]) "
              "VALUES('<visitor''s &quot;x&quot;>','<town''s &quot;x&quot;>',"
              "<party's \"x\">,'<comments''s &quot;x&quot;>')\n"
              "execute: SELECT @@IDENTITY AS NewID\n"
              "close\n"
              "object Cdonts.newMail\n"
              // No reply address: what was typed holds no at sign.
              "mail from desk@harbourmuseum.example.com reply  to desk@harbourmuseum.example.com"
              " cc office@harbourmuseum.example.com\n"
              "subject New entry in the \"guest book\"\n"
              "************************\n"
              "visitor: <visitor's \"x\">\n"
              "town: <town's \"x\">\n"
              "email: <email's\"x\">\n"
              "party: <party's \"x\">\n"
              "comments: <comments's \"x\">\n"
              "referrer: <referrer's \"x\">\n"
              "\n"
              "end\n");
}

TEST(ScriptHost, ChangesAndDeletesRecords)
{
    EXPECT_EQ(
        WhatRuns(ScriptOf(ServerCopy().at("loan-desk.asp"))),
        "open Microsoft.Jet.OLEDB.4.0: c:\\data\\museum.mdb\n"
        "execute: UPDATE [loans] SET [borrower]='<borrower''s &quot;x&quot;>',"
        "[days]=<days's \"x\"> WHERE [id]=<id's \"x\">\n"
        "close\n"
        "open Microsoft.Jet.OLEDB.4.0: c:\\data\\museum.mdb\n"
        "execute: DELETE FROM loans WHERE returned='returned'\n"
        "object CDO.Message\n"
        "mail from desk@harbourmuseum.example.com reply  to registrar@harbourmuseum.example.com"
        " cc \n"
        "subject Loan desk: the list has changed\n"
        "The list of loans was changed today. It is called \"loans\" as before.\n"
        "write: SCRIPT_NAME\n"
        "end\n");
}

} // namespace
} // namespace kiv::test
