// How a line goes through the merge: a table of steps, each run when the line holds something that
// it acts on.
#pragma once

#include "builder/line_triggers.h"
#include "text/loop_bound.h"

#include <span>
#include <string>
#include <string_view>

namespace kiv {

struct Build;
class Tracer;

/// A line of the current page on its way through the steps, which change its text in place.
struct MergedLine {
    explicit MergedLine(Build& build_in_work) : build(build_in_work) {}

    /// Puts another line in. `line_triggers` are those of ScanLine, or those of them that count.
    void Begin(std::string_view line, Triggers line_triggers)
    {
        text = line;
        triggers = line_triggers;
        bound = LineBound(line.size());
    }

    Build& build;
    Tracer* tracer = nullptr; // null: nobody asks for the way of this page's lines
    std::string text;
    Triggers triggers = 0; // of the text
    LineBound bound{0};    // of all that the steps make of the line
    std::string store;     // for the loops, and for values: its memory is kept
};

struct Step {
    Triggers triggers; // it acts on lines with any of them
    /// Returns whether it found something to act on; the line is then looked through again.
    bool (*run)(MergedLine& line);
};

/// Runs the steps in their order.
inline void RunSteps(std::span<const Step> steps, MergedLine& line)
{
    if (line.triggers == 0)
        return;
    for (const Step& step : steps)
        if ((line.triggers & step.triggers) != 0 && step.run(line))
            line.triggers = ScanLine(line.text);
}

} // namespace kiv
