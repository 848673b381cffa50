// A build that nobody sees: what sources would give.
#pragma once

#include "exchange/adopted_sources.h"
#include "platform/machine.h"
#include "platform/unwritten_files.h"

#include <optional>
#include <set>
#include <string>

namespace kiv {

/// What a trial came to.
struct Trial {
    std::set<std::string> warned;     // pages that the build has warned of, as in their "@FILE ="
    std::optional<std::string> fault; // what has stopped it
    std::string fault_page;           // where; "": nobody knows
};

/// Builds a section in memory from `texts`, into `files`. `folder` is its absolute drive path and
/// is there; the current directory stays what it is.
Trial BuildTrial(Machine& machine, UnwrittenFiles& files, const std::string& folder,
                 const SourceTexts& texts);

} // namespace kiv
