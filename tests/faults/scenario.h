// What is done to which files: one scenario for each thing that a command can do.
#pragma once

#include "faults/trees.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::faults {

using Arguments = std::vector<std::string>;

struct Scenario {
    std::string name;
    /// The files of drive C: before.
    Tree tree;
    /// Runs that lay down more of them, and what is changed by hand after these.
    std::vector<Arguments> prepare;
    Tree edits;
    /// The command, its arguments and its standard input. The process stands in "site".
    Arguments arguments;
    std::string input;
    /// Every file that the command makes, changes or takes away.
    std::set<std::string> changes;
    /// Files that it makes as well, with the bytes that they have already.
    std::set<std::string> made;
    /// Those among the changes that nobody can make again, as a list with captions. Every other
    /// file that was there before is such a source, too, unless the command makes it.
    std::set<std::string> sources;
    /// Files to which the command adds line by line.
    std::set<std::string> growing;
    /// Files that are there while it runs, and stay when it is killed.
    std::set<std::string> passing;
    /// Whether the report is asked for; without it, standard output is compared as it is.
    bool json = true;
    /// Files get other names: their bytes are looked for under any, and a renaming that was taken
    /// back is as good as done.
    bool renames = false;
    /// Whether it takes what the runs before have put on record, which stands in no file of drive
    /// C:.
    bool needs_records = false;
    /// Whether it can be done once only: started again, it says that there is nothing left to do.
    bool once = false;
};

/// The command's name.
const std::string& CommandOf(const Scenario& scenario);
/// Whether a file can be had again by running the command.
bool CanBeMadeAgain(const Scenario& scenario, const std::string& path);

std::vector<Scenario> AllScenarios();

// The parts of that list.
std::vector<Scenario> BeginScenarios();
std::vector<Scenario> BuildScenarios();
std::vector<Scenario> PictureScenarios();
std::vector<Scenario> NameScenarios();
std::vector<Scenario> NewsScenarios();
std::vector<Scenario> TextScenarios();

/// A text of the format, whose lines end in CR LF. The last one does so, too.
std::string Lines(const std::vector<std::string_view>& lines);
/// A small site with settings: three pages, an included text, an address list.
Tree SiteTree();

} // namespace kiv::faults
