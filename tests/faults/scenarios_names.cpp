// Names of files.
#include "faults/scenario.h"

namespace kiv::faults {

namespace {

/// Each file says which one it is.
void PutNamed(Tree& tree, const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        Put(tree, "site/" + name, "This was " + name);
}

Scenario Renamer(std::string name, Arguments arguments, const std::vector<std::string>& old_names,
                 const std::vector<std::string>& new_names)
{
    Scenario scenario;
    scenario.name = std::move(name);
    PutFolder(scenario.tree, "utils");
    PutFolder(scenario.tree, "site");
    Put(scenario.tree, "site/stays.txt", "This was stays.txt");
    PutNamed(scenario.tree, old_names);
    scenario.arguments = std::move(arguments);
    scenario.renames = true;
    for (const auto& names : {old_names, new_names})
        for (const std::string& changed : names)
            scenario.changes.insert("site/" + changed);
    return scenario;
}

/// The names hold characters beyond Windows-1252 and beyond ASCII; "B.TXT" changes in case alone.
Scenario FixNames()
{
    return Renamer("fix-names", {"fix-names", "C:\\site"},
                   {"A photo (1).JPG", "B.TXT", "caf\xC3\xA9 & bar.txt"},
                   {"a-photo--1-.jpg", "b.txt", "caf\xC3\xA9---bar.txt"});
}

Scenario ThumbNames()
{
    return Renamer("thumb-names", {"thumb-names", "C:\\site"}, {"a.gif", "b.jpg", "c.GIF"},
                   {"a_t.gif", "b_t.jpg", "c_t.GIF"});
}

Scenario Rename()
{
    return Renamer("rename", {"rename", "C:\\site", "old", "new"},
                   {"old-1.txt", "an-old-one.txt", "\xD0\xB6-old.txt"},
                   {"new-1.txt", "an-new-one.txt", "\xD0\xB6-new.txt"});
}

Scenario UndoRenames()
{
    Scenario scenario =
        Renamer("undo-renames", {"undo-renames", "C:\\site", "--report", "C:\\utils\\names.json"},
                {"b-1.txt", "b-2.txt", "b-3.txt"}, {"a-1.txt", "a-2.txt", "a-3.txt"});
    Put(scenario.tree, "utils/names.json",
        R"({"renamed": [["a-1.txt", "b-1.txt"], ["a-2.txt", "b-2.txt"], ["a-3.txt", "b-3.txt"]]})");
    return scenario;
}

/// The names that are on record.
Scenario UndoLastRenames()
{
    Scenario scenario =
        Renamer("undo-renames-last", {"undo-renames", "C:\\site"},
                {"B 1.txt", "b 2.txt", "b 3.txt"}, {"b-1.txt", "b-2.txt", "b-3.txt"});
    scenario.prepare = {{"fix-names", "C:\\site"}};
    scenario.needs_records = true;
    scenario.once = true;
    return scenario;
}

} // namespace

std::vector<Scenario> NameScenarios()
{
    return {FixNames(), ThumbNames(), Rename(), UndoRenames(), UndoLastRenames()};
}

} // namespace kiv::faults
