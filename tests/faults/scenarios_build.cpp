// Builds: of pages that are not there yet, over old ones, of one that changed, of a group.
#include "faults/scenario.h"

#include <unistd.h>

namespace kiv::faults {

namespace {

const Arguments kBuild = {"build", "C:\\site"};

const std::set<std::string> kBuilt = {"site/index.htm", "site/visit.htm", "site/letter.htm",
                                      "site/_toc.txt", "site/_sitemap.txt"};

Scenario Build(std::string name)
{
    Scenario scenario;
    scenario.name = std::move(name);
    scenario.tree = SiteTree();
    scenario.arguments = kBuild;
    scenario.changes = kBuilt;
    return scenario;
}

Scenario OverOldPages()
{
    Scenario scenario = Build("build-over-old");
    for (const std::string& page : kBuilt)
        Put(scenario.tree, page, "old " + page);
    return scenario;
}

Scenario OfOneChangedPage()
{
    Scenario scenario = Build("build-changed");
    scenario.prepare = {kBuild};
    Put(scenario.edits, "site/txt/hours.txt", Lines({"<p>Nine to six.</p>"}));
    scenario.changes = {"site/index.htm"};
    scenario.made = kBuilt;
    return scenario;
}

/// The rights and the owner of a page are the user's business, and a page may lie elsewhere.
Scenario OverOddPages()
{
    Scenario scenario = Build("build-over-odd");
    Put(scenario.tree, "site/index.htm", "old", 0640);
    scenario.tree["site/index.htm"].note = "keep me";
    Put(scenario.tree, "elsewhere/visit.htm", "old");
    PutLink(scenario.tree, "site/visit.htm", "../elsewhere/visit.htm");
    constexpr uid_t kSomebody = 1234;
    if (::geteuid() == 0)
        scenario.tree["site/index.htm"].owner = scenario.tree["site/index.htm"].group = kSomebody;
    scenario.changes.erase("site/visit.htm");
    scenario.changes.insert("elsewhere/visit.htm");
    return scenario;
}

/// Names that are spelled otherwise on the disk are looked up in the folder's list.
Scenario OfOtherSpelling()
{
    Scenario scenario = Build("build-spelling");
    for (const auto& [here, there] : {std::pair{"site/_html.txt", "site/_HTML.TXT"},
                                      {"site/txt/hours.txt", "site/TXT/Hours.txt"}}) {
        Put(scenario.tree, there, scenario.tree.at(here).bytes);
        scenario.tree.erase(here);
    }
    scenario.tree.erase("site/txt");
    Put(scenario.tree, "site/INDEX.HTM", "old");
    scenario.changes.erase("site/index.htm");
    scenario.changes.insert("site/INDEX.HTM");
    return scenario;
}

Scenario OfAllInOne()
{
    Scenario scenario = Build("build-single");
    Put(scenario.tree, "site/_singlehtml.txt", "");
    scenario.changes.insert("site/_singlehtml.txt");
    return scenario;
}

Scenario WithUploadList()
{
    Scenario scenario = Build("build-upload");
    Put(scenario.tree, "utils/ftplist.txt",
        Lines({"C:\\site\\|put @@ museum:@@", "C:\\other\\|put all"}));
    scenario.changes.insert("guestout2.bat");
    scenario.growing = {"guestout2.bat"};
    return scenario;
}

Scenario Group()
{
    Scenario scenario = Build("group");
    scenario.arguments = {"group", "C:\\site"};
    Put(scenario.tree, "site/_group.txt", Lines({"fish"}));
    Put(scenario.tree, "site/fish/_html.txt",
        Lines({"@FILE = cod", "@TITLE = Cod", "A fish.", "@@EOY", "Not now.", "@@EOY"}));
    Put(scenario.tree, "site/fish/_template.txt", Lines({"<!--BODY HERE-->"}));
    for (const char* const page :
         {"site/fish/cod.htm", "site/fish/_toc.txt", "site/fish/_sitemap.txt"})
        scenario.changes.insert(page);
    Put(scenario.tree, "site/fish/cod.htm", "old");
    return scenario;
}

Scenario SiteMap()
{
    Scenario scenario = Group();
    scenario.name = "sitemap";
    scenario.prepare = {scenario.arguments};
    scenario.arguments = {"sitemap", "C:\\site"};
    Put(scenario.edits, "site/_sitemap-master.txt", "old");
    scenario.changes = {"site/_sitemap-master.txt"};
    return scenario;
}

} // namespace

std::vector<Scenario> BuildScenarios()
{
    return {Build("build"),   OverOldPages(),    OfOneChangedPage(),
            OverOddPages(),   OfOtherSpelling(), OfAllInOne(),
            WithUploadList(), Group(),           SiteMap()};
}

} // namespace kiv::faults
