// The questions that are asked after every try.
#pragma once

#include "faults/findings.h"
#include "faults/workbench.h"

namespace kiv::faults {

/// What has to be known of a run to judge it.
struct Circumstances {
    bool output_failed = false;  // what it said could not be handed over
    bool tidying_failed = false; // what it wanted to take away could not be taken away
};

/// Runs the scenario's command as it is and notes what comes of it. Complaints tell what is wrong
/// even then.
Case MakeCase(const Workbench& bench, const Scenario& scenario, Complaints& complaints);

/// What is wrong with a run and the files behind it. Files are left as they are then.
Complaints JudgeRun(const Workbench& bench, const Case& with, const Ending& ending,
                    const Circumstances& circumstances);
/// Runs the same command again after a run that ended so, and looks whether that ends well.
Complaints JudgeNextRun(const Workbench& bench, const Case& with, const Ending& former);
/// For a renaming that has told what it did: takes it back by its report. The files are as the run
/// left them.
Complaints JudgeUndoing(const Workbench& bench, const Case& with, const Ending& ending);

/// For a renaming, whatever became of it: takes it back by what the program has on record. The
/// files are as the run left them.
Complaints JudgeUndoingLast(const Workbench& bench, const Case& with, const Ending& ending);

/// After a power cut: sources are old or new, and new when they were told as done; what can be made
/// again may be anything.
Complaints JudgeSources(const Case& with, const Tree& found, bool told_done);

/// All of them, in this order.
Complaints Judge(const Workbench& bench, const Case& with, const Ending& ending,
                 const Circumstances& circumstances);

/// What is wrong with a run's end alone: a crash, a hang, a report that is not whole.
Complaints JudgeEnding(const Scenario& scenario, const Ending& ending,
                       const Circumstances& circumstances);

/// A tree without the files that the program keeps for a while.
Tree WithoutOurs(const Tree& tree);

} // namespace kiv::faults
