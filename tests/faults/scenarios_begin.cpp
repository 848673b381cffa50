// Sites that are begun: beside others, and where half of one stands already.
#include "faults/scenario.h"

namespace kiv::faults {

namespace {

/// A folder that is made, with all that a site can begin with.
Scenario WholeSite()
{
    Scenario scenario;
    scenario.name = "init";
    scenario.tree = SiteTree();
    scenario.arguments = {"init", "C:\\new\\mill", "--news", "--section", "shop"};
    scenario.changes = {
        "new/mill/_html.txt",          "new/mill/_template.txt",      "new/mill/_group.txt",
        "new/mill/_sitemap.txt",       "new/mill/style.css",          "new/mill/hills.svg",
        "new/mill/news/_html.txt",     "new/mill/news/_template.txt", "new/mill/shop/_html.txt",
        "new/mill/shop/_template.txt", "new/mill/shop/_sitemap.txt",  "utils/kivnews.ini"};
    return scenario;
}

/// What is there is somebody's own.
Scenario HalfASite()
{
    Scenario scenario;
    scenario.name = "init-half";
    scenario.tree = SiteTree();
    Put(scenario.tree, "half/_template.txt", Lines({"<p>mine</p>", "<!--BODY HERE-->"}), 0640);
    Put(scenario.tree, "half/style.css", Lines({"p { margin: 0 }"}));
    scenario.arguments = {"init", "C:\\half"};
    scenario.changes = {"half/_html.txt", "half/hills.svg"};
    return scenario;
}

} // namespace

std::vector<Scenario> BeginScenarios()
{
    return {WholeSite(), HalfASite()};
}

} // namespace kiv::faults
