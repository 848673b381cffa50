#pragma once

#include "platform/run_error.h"
#include "text/loop_bound.h"
#include "text/text.h"

#include <string>
#include <string_view>

namespace kiv {

/// Calls `expand(position)` for the first `mark` (whatever its case; position 0-based) while the
/// line holds one. Ends quietly when a pass leaves the line as it was. Returns whether the line
/// held a mark. Throws `overflow` when the expansion would not end.
template <typename Expand>
bool ExpandWhileLeft(std::string& line, std::string_view mark, Expand expand)
{
    std::size_t at = FindNoCase(line, mark);
    if (at == npos)
        return false;
    LoopBound bound(CountNoCase(line, mark), line.size());
    std::string before;
    while (at != npos) {
        before = line;
        expand(at);
        if (line == before)
            return true;
        at = FindNoCase(line, mark);
        if (!bound.Allows(line.size(), at != npos))
            throw RunError(ErrorKind::overflow,
                           "\"" + std::string(mark) + "\" expands to itself without end");
    }
    return true;
}

} // namespace kiv
