#include "blocks/dispatcher.h"
#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/page_directives.h"
#include "builder/page_list_parser.h"
#include "builder/server_scripts.h"
#include "cli/call_table.h"
#include "docs/manual/generator/word_index.h"
#include "inspect/finding_table.h"
#include "platform/site_files.h"
#include "shell/list_files.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv::manual {

namespace {

using Words = std::vector<std::string>;

/// In the order of a dictionary, whatever order the program tries them in.
Words Sorted(Words words)
{
    std::sort(words.begin(), words.end(), [](const std::string& one, const std::string& other) {
        return LowerCase(one) < LowerCase(other);
    });
    return words;
}

Words Sorted(const std::vector<std::string_view>& words)
{
    return Sorted(Words(words.begin(), words.end()));
}

/// Adds a word unless it is there.
void AddOnce(Words& words, std::string_view word)
{
    if (std::find(words.begin(), words.end(), word) == words.end())
        words.emplace_back(word);
}

Words DirectiveWords()
{
    Words words = {"@FILE ="};
    for (const auto& more : {PageDirectiveWords(), ListDirectiveWords()})
        for (const std::string_view word : more)
            AddOnce(words, word);
    return words;
}

Words BangMarks()
{
    Words marks;
    for (const Bang* const bang : kBangs)
        marks.emplace_back(bang->mark);
    return marks;
}

Words CommandCalls()
{
    Words calls;
    for (const CallRow& call : Calls())
        calls.push_back(std::string(kProgram).append(call.name));
    return calls;
}

/// The names without their folders, as the manual has them now and then.
Words FileNames()
{
    Words names;
    for (const std::string_view file : kSiteFiles)
        AddOnce(names, file.substr(file.rfind('\\') + 1));
    return names;
}

} // namespace

std::vector<WordFamily> WordFamilies()
{
    return {
        {"Directives of the page list", "directives", Sorted(DirectiveWords())},
        {"Marks of the page list", "page-list", {";", "++", "!++", "@@stop", "@@start", "@@EOY"}},
        {"Variables, macros, references, wrappers",
         "macros",
         {"@@1", "%%1", "!!1[", "$$1[", "??1[", "?!1[", "[[1", "]]", "<>", "~~"}},
        {"At-variables", "at-variables", Sorted(AtVariableNames())},
        {"Bangs", "bangs", Sorted(BangMarks())},
        {"Block tags", "blocks", Sorted(BlockTagWords())},
        {"Marks inside tables", "tables", {"class:", "width:", "cols:", "^^", "##", "{{"}},
        {"Server-script lines", "scripts", Sorted(ServerScriptWords())},
        {"Marks of the template", "template", {"<!--BODY HERE-->", "+file", "=1=", "=9="}},
        {"Places for lists",
         "navigation",
         {"<!--TOC HERE-->", "<!--DROPDOWN HERE-->", "<!--SITEMAPHERE-->"}},
        {"Lines for some passes", "merge", {"ASP:", "HTM:", "DIR1:"}},
        {"Files", "settings", Sorted(FileNames())},
        {"Addresses in kivaddr.ini", "settings", Sorted(AddressNames())},
        {"Findings of a check", "check", Sorted(FindingNames())},
        {"Commands of kiv-cli", "commands", Sorted(CommandCalls())},
    };
}

} // namespace kiv::manual
