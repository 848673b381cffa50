#include "faults/scenario.h"

#include <iterator>
#include <utility>

namespace kiv::faults {

const std::string& CommandOf(const Scenario& scenario)
{
    const bool launches = scenario.arguments.front() == "--launch";
    return scenario.arguments[launches ? 1 : 0];
}

bool CanBeMadeAgain(const Scenario& scenario, const std::string& path)
{
    const bool made = scenario.changes.contains(path) || scenario.made.contains(path);
    return made && !scenario.sources.contains(path);
}

std::string Lines(const std::vector<std::string_view>& lines)
{
    std::string text;
    for (const std::string_view line : lines)
        text.append(line).append("\r\n");
    return text;
}

Tree SiteTree()
{
    Tree tree;
    PutFolder(tree, "utils");
    Put(tree, "utils/kiv_editpad.txt", Lines({"C:\\utils\\editor.exe "}));
    Put(tree, "utils/kivaddr.ini",
        Lines({"sender|desk@museum.example", "recipient|mail@museum.example"}));
    Put(tree, "utils/ftplist.txt", Lines({";label|command"}));
    Put(tree, "site/_html.txt",
        Lines({"@FILE = index", "@TITLE = The museum", "Welcome.", "++txt\\hours.txt",
               "@FILE = visit", "@TITLE = Visit us", "Open daily.", "@FILE = letter",
               "@TITLE = Write to us", "@SENDEMAIL:A letter|email|who@museum.example|message"}));
    Put(tree, "site/_template.txt",
        Lines({"<title>@TITLE</title>", "<!--BODY HERE-->", "=2=<a href=\"@PREV\">Back</a>"}));
    Put(tree, "site/txt/hours.txt", Lines({"<p>Ten to five.</p>"}));
    return tree;
}

std::vector<Scenario> AllScenarios()
{
    std::vector<Scenario> all;
    for (const auto part : {BeginScenarios, BuildScenarios, PictureScenarios, NameScenarios,
                            NewsScenarios, TextScenarios}) {
        std::vector<Scenario> some = part();
        all.insert(all.end(), std::make_move_iterator(some.begin()),
                   std::make_move_iterator(some.end()));
    }
    return all;
}

} // namespace kiv::faults
