// Sources and texts of a site from one encoding to the other, and back.
#pragma once

#include "exchange/encoded_text.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kiv {

class Workspace;

enum class EncodingWork {
    change,  // what is not in the encoding yet
    dry_run, // tells what would change, and changes nothing
};

/// A source that changes, or would.
struct EncodingChange {
    std::string path;             // absolute drive path
    std::size_t references = 0;   // characters that became references
    bool lost_mark = false;       // a byte order mark was taken away
    std::size_t declarations = 0; // of the character set that were changed
    bool is_taken_back = false;   // it gets the very bytes that it had before the last run
};

struct EncodingResult {
    std::vector<EncodingChange> changes;
    std::size_t left = 0; // sources that cannot be changed; each has a warning
    std::size_t all = 0;  // sources that were looked at
};

/// Brings the sources of the working directory and of the members of its group into an encoding.
/// A file is changed as a whole or not at all; what was changed is on record before, for
/// UndoEncoding. A source that the last run brought here from this encoding, and that nobody has
/// touched since, gets its former bytes. Warns of sources that stay as they are, of lines that name
/// files and of a site that declares no character set. The status tells how many were changed.
/// Throws RunError of kind `file` for what cannot be read or written, and where there are none.
EncodingResult EncodeSite(Workspace& workspace, Encoding to, EncodingWork work);

/// Gives the sources back what they held before the last run. One that was changed since stays,
/// with a warning. Throws RunError of kind `file` when there is nothing on record.
void UndoEncoding(Workspace& workspace);

} // namespace kiv
