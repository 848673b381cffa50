// Conversions, which work through a scratch file.
#include "faults/scenario.h"

namespace kiv::faults {

namespace {

Scenario Convert(std::string name, const Arguments& options, std::string input)
{
    Scenario scenario;
    scenario.name = std::move(name);
    scenario.tree = SiteTree();
    scenario.arguments = {"convert"};
    scenario.arguments.insert(scenario.arguments.end(), options.begin(), options.end());
    scenario.input = std::move(input);
    scenario.json = false;
    return scenario;
}

Scenario Letter()
{
    Scenario scenario = Convert("convert", {}, Lines({"A letter.", "", "Yours"}));
    scenario.passing = {"$$$x.txt"};
    return scenario;
}

/// A conversion that leaves its scratch file where it is.
Scenario CleanQuotes()
{
    Scenario scenario = Convert("convert-quotes", {"--mode", "cleanquotes"},
                                Lines({"\xE2\x80\x9CQuoted\xE2\x80\x9D text"}));
    Put(scenario.tree, "$$$x.txt", "old");
    scenario.changes = {"$$$x.txt"};
    return scenario;
}

} // namespace

std::vector<Scenario> TextScenarios()
{
    return {Letter(), CleanQuotes(),
            Convert("convert-getnames", {"--mode", "getnames"},
                    Lines({"<input name=\"email\">", "<input name=\"message\">"}))};
}

} // namespace kiv::faults
