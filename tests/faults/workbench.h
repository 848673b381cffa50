// Where the program is let loose: a folder that stands for drive C:.
#pragma once

#include "faults/launch.h"
#include "faults/scenario.h"
#include "faults/trees.h"

#include <map>
#include <string>

namespace kiv::faults {

struct Case;

class Workbench {
  public:
    /// `folder` is made and belongs to the workbench, with all that is in it.
    Workbench(std::string program, std::string folder);

    /// Whether the program writes its pages by threads.
    static bool HasThreads();

    const std::string& Folder() const { return folder_; }
    /// Where drive C: lies.
    std::string Drive() const { return folder_ + "/c"; }
    /// Where the program keeps records of its own, as of the last renames in a folder.
    std::string State() const { return folder_ + "/state"; }
    /// Lays down the files of drive C:, and what the program has on record elsewhere.
    void Lay(const Tree& tree, const Tree& records = {}) const
    {
        MakeSo(Drive(), tree);
        MakeSo(State(), records);
    }
    /// Lays down what a case begins with.
    void LayBefore(const Case& with) const;
    Tree Look() const { return ReadTree(Drive()); }
    Tree Records() const { return ReadTree(State()); }

    /// A call of the program as the scenario wants it, with other arguments if need be.
    Launch LaunchOf(const Scenario& scenario, const Arguments& arguments) const;
    Launch LaunchOf(const Scenario& scenario) const
    {
        return LaunchOf(scenario, scenario.arguments);
    }

    /// A native path, or a text with such, without what differs from run to run.
    std::string Plain(std::string text) const;

  private:
    /// What the scenario's runs before it put on record in this workbench.
    const Tree& RecordsFor(const Scenario& scenario) const;

    std::string program_;
    std::string folder_;
    mutable std::map<std::string, Tree> records_; // by the scenario's name
};

/// A scenario with what comes of it when nothing happens.
struct Case {
    Scenario scenario;
    Tree before;
    Tree after;
    std::string out;
    double seconds = 0; // for a run
};

} // namespace kiv::faults
