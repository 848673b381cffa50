// The loops that expand what a line holds. Each goes on while a mark is left in the line and looks
// only where the change before may have made a mark. Together they keep to the line's bound.
#pragma once

#include "builder/arguments.h"
#include "builder/build_state.h"
#include "builder/merge_steps.h"
#include "platform/run_error.h"
#include "text/text.h"
#include "text/text_cursor.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kiv {

/// Where a line has changed. Places are 0-based.
struct Change {
    std::size_t from = npos; // the first character that may be another one now; npos: nothing has
    std::size_t behind = 0;  // how many characters stand behind what was put in
};

[[noreturn]] inline void ThrowEndless(std::string_view mark)
{
    throw RunError(ErrorKind::overflow,
                   "expanding \"" + std::string(mark) +
                       "\" does not come to an end, or makes too much text",
                   {},
                   "Look at the definition of " + std::string(mark) +
                       " and at those that it uses: none may lead back to it.");
}

/// Calls `change(cursor)` with the cursor at the first `mark` (whatever its case) while the line
/// holds one. `change` gives the first character that it has changed, or npos when it left the line
/// as it was, which ends the loop quietly. Returns whether the line held a mark. Throws `overflow`
/// when the line goes past its bound.
template <typename ChangeAt>
bool ChangeWhileLeft(MergedLine& line, std::string_view mark, ChangeAt change)
{
    std::size_t at = FindNoCase(line.text, mark);
    if (at == npos)
        return false;
    line.bound.AddMarks(CountNoCase(line.text, mark));
    TextCursor cursor(line.text, line.store);
    while (at != npos) {
        cursor.MoveTo(cursor.At() + at);
        const std::size_t place = cursor.At();
        const std::size_t changed = change(cursor);
        if (changed == npos)
            break;
        cursor.MoveTo(SearchStart(std::min(place, changed), mark));
        at = FindNoCase(cursor.Rest(), mark);
        if (!line.bound.Allows(cursor.Size(), at != npos) ||
            !line.bound.Spend(2 * cursor.TakeMoved()))
            ThrowEndless(mark);
    }
    cursor.Close();
    return true;
}

/// Replaces the use of `name` at the cursor by what `expand(use)` makes of it.
template <typename Expand>
Change ExpandUse(MergedLine& line, TextCursor& cursor, std::string_view name, Expand expand)
{
    const BracketUse use = CutBracketUse(cursor.Before(), cursor.Rest(), name, line.build.messages);
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->TellUse({name, use.Text(), use.is_closed});
    Expansion expansion = expand(use);
    // The warning of a missing "]" quotes the rest of the line.
    const std::size_t each = use.is_closed ? 2 : 20;
    if (!line.bound.Spend(each * (use.size + expansion.text.size())))
        ThrowEndless(name);
    Change change = {0, 0};
    if (expansion.replaces_line) {
        cursor.PutAll(expansion.text);
    } else if (use.Text() == expansion.text) {
        return {};
    } else {
        change.behind = cursor.Rest().size() - use.size;
        cursor.Put(use.size, expansion.text);
        change.from = cursor.At();
    }
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(std::string(name) + "[", std::move(expansion.told), cursor.Before(),
                          cursor.Rest(), expansion.from);
    return change;
}

} // namespace kiv
