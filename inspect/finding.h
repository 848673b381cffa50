// What an inspection finds in a site.
#pragma once

#include "platform/place.h"

#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// How bad it is: a note is worth knowing, a warning is likely wrong, an error is seen by visitors.
enum class Severity { note, warning, error };

/// "error", "warning" or "note".
std::string_view SeverityName(Severity severity);

struct Finding {
    Severity severity = Severity::note;
    std::string_view name;       // of its row in the table of findings
    std::string text;            // what is wrong, as a sentence would say it, without its full stop
    KeptPlace where;             // the source line, and the page where there is one
    std::string suggestion = {}; // what to write or to do instead; "": nothing is known
};

/// "2 errors, 1 warning, 0 notes"; "nothing found" for none.
std::string CountText(std::span<const Finding> findings);

} // namespace kiv
