// All tries of all attacks, on as many processors as are wanted, for as long as is wanted.
#pragma once

#include "faults/attack.h"

namespace kiv::faults {

struct Wishes {
    Settings settings;
    std::string command;              // only scenarios of this command; "": all
    std::string scenario;             // only this one
    std::vector<std::string> attacks; // only these; none: all
    double budget = 20;               // seconds; 0: until all is done
    int jobs = 2;
};

/// Runs the tries that the wishes name, in an order by chance, and prints what was found. False
/// when anything was.
bool RunCampaign(const Wishes& wishes);

/// Runs one try by its text, tells of it, and leaves the files where they are.
bool RunOneTry(const Wishes& wishes, const std::string& text);

} // namespace kiv::faults
