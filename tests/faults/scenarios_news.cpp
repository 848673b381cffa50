// News: an article and its entries in page lists that somebody has written.
#include "faults/scenario.h"

namespace kiv::faults {

namespace {

Tree NewsTree()
{
    Tree tree = SiteTree();
    Put(tree, "utils/kivnews.ini",
        Lines({";label|folder|tag|reminder|home folder|highlight",
               "Museum|C:\\site\\news\\|hm|Pick a name|C:\\site\\|", "Alone|C:\\site\\news\\|al|",
               "Scratch|C:\\temp\\|x|", "=pr|Press Release"}));
    Put(tree, "utils/article.txt", Lines({"The bell is back.", "", "It rang at noon."}));
    Put(tree, "utils/lead.txt", "At last!");
    Put(tree, "site/_html.txt",
        Lines({"@FILE = index", "@TITLE = The museum", "<ul>", ";inserthere1", "</ul>"}));
    Put(tree, "site/news/_html.txt",
        Lines({"!!1 = <li>!1: !3</li>", "@FILE = all", "@TITLE = All news", ";inserthere1",
               "!!1[May 2, 2005|pr050205|The clock]", ";inserthere2", "@file = pr050205",
               "@title = The clock", "++txt\\pr050205.txt", "@@EOY", ""}),
        0640);
    Put(tree, "site/news/_template.txt", Lines({"<!--BODY HERE-->"}));
    Put(tree, "site/news/txt/pr050205.txt", Lines({"<p>It runs again.</p>"}));
    return tree;
}

Scenario News(std::string name, const std::string& site)
{
    Scenario scenario;
    scenario.name = std::move(name);
    scenario.tree = NewsTree();
    scenario.arguments = {"news",
                          "--site",
                          site,
                          "--name",
                          "pr102405",
                          "--title",
                          "The bell",
                          "--lead",
                          "C:\\utils\\lead.txt",
                          "--text",
                          "C:\\utils\\article.txt"};
    scenario.changes = {"site/news/_html.txt", "site/news/txt/pr102405.txt"};
    scenario.sources = {"site/news/_html.txt", "site/_html.txt", "temp/_html.txt",
                        "site/news/txt/pr102405.txt", "temp/txt/pr102405.txt"};
    return scenario;
}

Scenario NewsWithHome()
{
    Scenario scenario = News("news", "1");
    scenario.changes.insert("site/_html.txt");
    return scenario;
}

/// The editor is started with each of the three files.
Scenario NewsWithEditor()
{
    Scenario scenario = NewsWithHome();
    scenario.name = "news-launch";
    scenario.arguments.insert(scenario.arguments.begin(), "--launch");
    Put(scenario.tree, "utils/kiv_editpad.txt", Lines({"Z:\\bin\\true "}));
    return scenario;
}

/// The folders of the site for trying things out are made by the command.
Scenario ScratchNews()
{
    Scenario scenario = News("news-scratch", "3");
    Put(scenario.tree, "temp/_html.txt", Lines({";inserthere1", ";inserthere2"}));
    scenario.changes = {"temp/_html.txt", "temp/txt/pr102405.txt"};
    return scenario;
}

} // namespace

std::vector<Scenario> NewsScenarios()
{
    return {NewsWithHome(), News("news-alone", "2"), NewsWithEditor(), ScratchNews()};
}

} // namespace kiv::faults
