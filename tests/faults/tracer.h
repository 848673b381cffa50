// Runs the program, looks at each of its system calls, and strikes at one of them.
#pragma once

#include "faults/calls.h"
#include "faults/launch.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kiv::faults {

/// What happens at a call.
enum class Deed : std::uint8_t {
    none,
    fail,        // it is not made, and gives an error
    fail_late,   // it is made, and gives an error all the same
    fail_onward, // every call of its like fails from here on: a disk that is full, or gone
    shorten,     // fewer bytes are read or written than were asked for
    kill_before, // the program is killed
    kill_after,  //
    pause        // somebody else has his turn
};

struct Strike {
    Deed deed = Deed::none;
    std::uint16_t at = 0; // the call's number in the run, from 1
    std::int16_t error = 0;
    bool operator==(const Strike&) const = default;
};

/// What a file system cannot do; each is a kind that is met.
struct Surroundings {
    std::string_view name;
    bool no_unnamed = false;    // O_TMPFILE
    bool no_replacing = false;  // RENAME_NOREPLACE
    bool no_links = false;      // hard links
    bool no_empty_path = false; // a name for an open file by AT_EMPTY_PATH
    bool no_proc = false;       // the same by way of /proc
};

struct Plan {
    Strike strike;
    Surroundings surroundings;
    std::function<void()> at_pause;
    bool record = false; // note every call
};

/// A call as a person wants to read of it: "renameat2 _html.txt".
using CallText = std::string;

struct Noted {
    Call call;
    CallText text;
};

struct Outcome {
    Ending ending;
    std::optional<Noted> struck; // the call, where the run came so far
    int calls = 0;               // how many there were
    std::vector<Noted> noted;
};

/// Whether this system lets a process be traced; if not, why.
std::string WhyNotTraced();

Outcome RunTraced(const Launch& launch, const Plan& plan);

} // namespace kiv::faults
