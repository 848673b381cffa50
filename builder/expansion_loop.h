#pragma once

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

/// Calls `expand(position)` for the first `mark` (whatever its case; position 0-based) while the
/// line holds one. `expand` gives the first character that it has changed, or npos when it left the
/// line as it was, which ends the loop quietly. Returns whether the line held a mark. Throws
/// `overflow` when the expansion would not end.
template <typename Expand>
bool ExpandWhileLeft(std::string& line, std::string_view mark, Expand expand)
{
    std::size_t at = FindNoCase(line, mark);
    if (at == npos)
        return false;
    LoopBound bound(CountNoCase(line, mark), line.size());
    while (at != npos) {
        const std::size_t changed = expand(at);
        if (changed == npos)
            return true;
        at = FindNoCase(line, mark, SearchStart(std::min(at, changed), mark));
        if (!bound.Allows(line.size(), at != npos))
            throw RunError(ErrorKind::overflow,
                           "\"" + std::string(mark) + "\" expands to itself without end");
    }
    return true;
}

} // namespace kiv
