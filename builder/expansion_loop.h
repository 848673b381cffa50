// The loops that expand what a line holds. Each goes on while a mark is left in the line, has a
// bound, and looks only where the change before may have made a mark.
#pragma once

#include "builder/arguments.h"
#include "builder/build_state.h"
#include "builder/merge_steps.h"
#include "platform/run_error.h"
#include "text/loop_bound.h"
#include "text/text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kiv {

/// The place from which a search sees every `mark` that a change at `changed` (0-based) may have
/// made: what was put in can join what stands before it.
inline std::size_t SearchStart(std::size_t changed, std::string_view mark)
{
    return changed < mark.size() ? 0 : changed - mark.size() + 1;
}

/// Calls `change(position)` for the first `mark` (whatever its case; position 0-based) while the
/// line holds one. `change` gives the first character that it has changed, or npos when it left the
/// line as it was, which ends the loop quietly. Returns whether the line held a mark. Throws
/// `overflow` when the changes would not end.
template <typename Change>
bool ChangeWhileLeft(MergedLine& line, std::string_view mark, Change change)
{
    std::size_t at = FindNoCase(line.text, mark);
    if (at == npos)
        return false;
    LoopBound bound(CountNoCase(line.text, mark), line.text.size());
    while (at != npos) {
        const std::size_t changed = change(at);
        if (changed == npos)
            return true;
        at = FindNoCase(line.text, mark, SearchStart(std::min(at, changed), mark));
        if (!bound.Allows(line.text.size(), at != npos))
            throw RunError(ErrorKind::overflow,
                           "\"" + std::string(mark) + "\" expands to itself without end");
    }
    return true;
}

/// Replaces the use of `name` at `at` (0-based) by what `expand(use)` makes of it. Returns the
/// first character that may be another one now; npos when the line is as it was.
template <typename Expand>
std::size_t ExpandUse(MergedLine& line, std::size_t at, std::string_view name, Expand expand)
{
    const BracketUse use = CutBracketUse(line.text, at, name, line.build.messages);
    const Expansion expansion = expand(use);
    if (expansion.replaces_line) {
        line.text = expansion.text;
        return 0;
    }
    if (use.Text() == expansion.text)
        return npos;
    line.text.replace(at, use.size, expansion.text);
    return at;
}

} // namespace kiv
