#include "faults/pairs.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace kiv::faults {

namespace {

Scenario Named(const std::string& name)
{
    for (Scenario& scenario : AllScenarios())
        if (scenario.name == name)
            return std::move(scenario);
    throw std::runtime_error("no scenario " + name);
}

Scenario With(Scenario scenario, Arguments arguments)
{
    scenario.arguments = std::move(arguments);
    return scenario;
}

Pair Twice(const std::string& name)
{
    return {name + "-twice", Named(name), Named(name)};
}

/// Another item for the same lists.
Pair TwoItems()
{
    Pair pair{"news-two-items", Named("news"), Named("news")};
    std::replace(pair.second.arguments.begin(), pair.second.arguments.end(),
                 std::string("pr102405"), std::string("pr102505"));
    return pair;
}

Pair NewsAndBuild()
{
    Pair pair{"news-and-build", Named("news"), {}, true};
    pair.second = With(pair.first, {"build", "C:\\site\\news"});
    return pair;
}

Pair PicturesAndBuild()
{
    Pair pair{"pictures-build", Named("pictures"), {}, true};
    pair.second = With(pair.first, {"build", "C:\\site"});
    return pair;
}

Pair TwoTexts()
{
    Pair pair{"convert-two", Named("convert"), Named("convert")};
    pair.second.input = "Another letter.\r\n";
    return pair;
}

Pair TwoRenamers()
{
    Pair pair{"renamers", Named("fix-names"), {}};
    pair.second = With(pair.first, {"rename", "C:\\site", "photo", "picture"});
    return pair;
}

} // namespace

std::vector<Pair> AllPairs()
{
    return {Twice("init"),        Twice("news"),      TwoItems(),    NewsAndBuild(),
            Twice("pictures"),    PicturesAndBuild(), TwoTexts(),    Twice("convert-quotes"),
            Twice("fix-names"),   Twice("rename"),    TwoRenamers(), Twice("build"),
            Twice("build-upload")};
}

} // namespace kiv::faults
