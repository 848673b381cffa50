#include "builder/server_scripts.h"

#include "builder/server_script_generators.h"
#include "text/table_column.h"
#include "text/text.h"

#include <algorithm>
#include <string_view>

namespace kiv {

namespace {

struct ServerScript {
    std::string_view directive; // compared without regard to case
    std::string (*generate)(std::string_view argument, const Addresses& addresses);
};

constexpr ServerScript kServerScripts[] = {
    {"@SHOWDB:", ScriptShowDb},       {"@OPENDB:", ScriptOpenDb},
    {"@SENDEMAIL:", ScriptSendEmail}, {"@SSENDEMAIL:", ScriptSendEmailNewer},
    {"@FORMREAD:", ScriptFormRead},   {"@DBINSERT:", ScriptDbInsert},
    {"@DBUPDATE:", ScriptDbUpdate},   {"@KILLRECORD:", ScriptKillRecord},
    {"@FIXQUOTES:", ScriptFixQuotes},
};

} // namespace

std::vector<std::string_view> ServerScriptWords()
{
    return ColumnOf(kServerScripts, &ServerScript::directive);
}

bool IsServerScript(std::string_view line)
{
    return std::ranges::any_of(kServerScripts, [&](const ServerScript& script) {
        return StartsWithNoCase(line, script.directive);
    });
}

std::string_view ExpandServerScript(std::string& line, const Addresses& addresses)
{
    for (const ServerScript& script : kServerScripts) {
        if (!StartsWithNoCase(line, script.directive))
            continue;
        line = script.generate(Trim(FromChar(line, script.directive.size() + 1)), addresses);
        return script.directive; // every block begins with "<%", so no later directive fits it
    }
    return {};
}

} // namespace kiv
