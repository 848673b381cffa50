// Server scripts that open, show and change a database.
#include "builder/arguments.h"
#include "builder/server_script_generators.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <cstddef>
#include <vector>

namespace kiv {

namespace {

/// A script variable whose value is stored in the column of the same name.
struct StoredField {
    std::string_view name;
    bool bare = false; // stored without single quotes
};

StoredField FieldFrom(std::string_view text)
{
    return text.starts_with('*') ? StoredField{text.substr(1), true} : StoredField{text, false};
}

std::vector<StoredField> FieldsFrom(const Fields& fields, std::size_t first)
{
    std::vector<StoredField> stored;
    for (std::size_t n = first; n <= fields.Count(); ++n)
        stored.push_back(FieldFrom(fields[n]));
    return stored;
}

/// Every single quote doubled, in names as well as in the table. The format wants it so.
std::string QuotesDoubled(std::string_view argument)
{
    std::string text(argument);
    ReplaceEach(text, "'", "''");
    return text;
}

} // namespace

std::string ScriptOpenDb(std::string_view argument, const Addresses&)
{
    return JoinedLines({"<%", "Set conn = Server.CreateObject(\"ADODB.Connection\")",
                        "conn.Provider = \"Microsoft.Jet.OLEDB.4.0\"",
                        Joined({"conn.Open \"", argument, "\""}), "%>"});
}

std::string ScriptShowDb(std::string_view argument, const Addresses&)
{
    const std::size_t bar = argument.find('|');
    if (bar == npos)
        throw RunError(ErrorKind::invalid_argument,
                       "@SHOWDB: has no \"|\" between its database and its table", {},
                       "Write it as \"@SHOWDB:path|table\".");
    const std::string_view path = argument.substr(0, bar);
    const std::string_view table = argument.substr(bar + 1);
    return JoinedLines({
        "<%",
        "Set conn = Server.CreateObject(\"ADODB.Connection\")",
        "conn.Provider = \"Microsoft.Jet.OLEDB.4.0\"",
        Joined({"conn.Open \"", path, "\""}),
        "set rs=Server.CreateObject(\"ADODB.recordset\")",
        Joined({"sql=\"SELECT * from ", table, ";\""}),
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
        "</table>",
    });
}

std::string ScriptKillRecord(std::string_view argument, const Addresses&)
{
    const Fields fields(argument, "@KILLRECORD:");
    const std::string_view table = fields[1];
    const std::string_view variable = fields[2];
    // The column is compared with the variable's name, not with its value. The format wants it so.
    return JoinedLines(
        {"<%", Joined({"sql = \"DELETE FROM ", table, " WHERE ", variable, "='", variable, "'\""}),
         "conn.Execute sql", "%>"});
}

std::string ScriptDbInsert(std::string_view argument, const Addresses&)
{
    const std::string doubled = QuotesDoubled(argument);
    const Fields fields(doubled, "@DBINSERT:");
    const std::string_view table = fields[1];
    std::vector<StoredField> stored = FieldsFrom(fields, 2);
    if (stored.empty())
        stored.push_back(
            {table, false}); // the last field closes both lists, even if it is the table
    std::string columns;
    std::string values;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const auto [name, bare] = stored[i];
        const bool last = i + 1 == stored.size();
        columns.append("[").append(name).append(last ? "" : "],");
        values.append(bare ? "" : "\"'\" & ").append(name).append(bare ? " & \"" : " & \"'");
        values.append(last ? ")\"" : ",\" & ");
    }
    return JoinedLines({
        "<%",
        Joined({"sql = \"INSERT INTO [", table, "] (", columns, "]) VALUES(\" & ", values}),
        "conn.Execute sql,recaffected",
        "sql = \"SELECT @@IDENTITY AS NewID\"",
        "Set loRs = conn.Execute(sql)",
        "hotID = loRs.Fields(\"NewID\").value",
        "conn.Close",
        "%>",
    });
}

std::string ScriptDbUpdate(std::string_view argument, const Addresses&)
{
    const std::string doubled = QuotesDoubled(argument);
    const Fields fields(doubled, "@DBUPDATE:");
    const std::string_view table = fields[1];
    const StoredField key = FieldFrom(fields[2]);
    std::string settings;
    for (const auto [name, bare] : FieldsFrom(fields, 3)) {
        const std::string_view quote = bare ? "" : "'";
        settings += Joined(
            {settings.empty() ? "" : ",", "[", name, "]=", quote, "\" & ", name, " & \"", quote});
    }
    const std::string condition = key.bare
                                      ? Joined({"[", key.name, "]=\" & ", key.name})
                                      : Joined({"[", key.name, "]='\" & ", key.name, " & \"'\""});
    return JoinedLines(
        {"<%", Joined({"sql = \"UPDATE [", table, "] SET ", settings, " WHERE ", condition}),
         "conn.Execute sql", "conn.Close", "%>"});
}

} // namespace kiv
