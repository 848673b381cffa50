// Picture lists, and page lists made from pages.
#include "faults/scenario.h"

namespace kiv::faults {

namespace {

/// A GIF's head; it is all that is read. Sizes below 256.
std::string Gif(char width, char height)
{
    return std::string("GIF89a") + width + '\0' + height + '\0' + std::string("\0\0\0;", 4);
}

void PutPictures(Tree& tree, const std::string& folder)
{
    Put(tree, folder + "/bell.gif", Gif(40, 30));
    Put(tree, folder + "/quay.gif", Gif(80, 60));
    Put(tree, folder + "/quay_t.gif", Gif(20, 15));
    Put(tree, folder + "/_alt.txt",
        Lines(
            {"bell.gif|The bell|Photo: Orme|Rung at noon", "quay.gif|The quay||Before the flood"}));
}

std::set<std::string> ListsIn(const std::string& folder)
{
    std::set<std::string> lists;
    for (const char* const name : {"_piclist.txt", "_banglist.txt", "_banglist2.txt",
                                   "_banglist3.txt", "_banglist4.txt", "_pichtml.txt"})
        lists.insert(folder + "/" + name);
    return lists;
}

/// Captions stay; a picture that is new gets a line of its own.
Scenario Pictures(std::string name, const std::string& folder)
{
    Scenario scenario;
    scenario.name = std::move(name);
    scenario.tree = SiteTree();
    PutPictures(scenario.tree, folder);
    Put(scenario.tree, folder + "/new.gif", Gif(10, 10));
    scenario.arguments = {"pictures", "C:\\site"};
    scenario.changes = ListsIn(folder);
    scenario.changes.insert(folder + "/_alt.txt");
    scenario.sources = {folder + "/_alt.txt"};
    return scenario;
}

Scenario PicturesOfFolder()
{
    Scenario scenario = Pictures("pictures-folder", "site/images");
    for (const std::string& list : ListsIn("site/images"))
        Put(scenario.tree, list, "old");
    scenario.arguments.insert(scenario.arguments.end(), {"--folder", "images"});
    return scenario;
}

Scenario FirstPictures()
{
    Scenario scenario = Pictures("pictures-first", "site");
    scenario.tree.erase("site/_alt.txt");
    return scenario;
}

Scenario Grab(std::string name, const Arguments& options)
{
    Scenario scenario;
    scenario.name = std::move(name);
    scenario.tree = SiteTree();
    Put(scenario.tree, "site/one.htm", Lines({"<title>One</title>", "<body>", "1", "</body>"}));
    Put(scenario.tree, "site/two.html", Lines({"<title>Two", "lines</title>"}));
    Put(scenario.tree, "site/three.asp", Lines({"<p>Untitled</p>"}));
    Put(scenario.tree, "site/grabtitles.txt", "old");
    scenario.arguments = {"grab", "C:\\site"};
    scenario.arguments.insert(scenario.arguments.end(), options.begin(), options.end());
    scenario.changes = {"site/grabtitles.txt"};
    return scenario;
}

} // namespace

std::vector<Scenario> PictureScenarios()
{
    return {Pictures("pictures", "site"), PicturesOfFolder(), FirstPictures(), Grab("grab", {}),
            Grab("grab-all", {"--redirect", "--all"})};
}

} // namespace kiv::faults
