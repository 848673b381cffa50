// From a folder along a path of the web to a file.
#pragma once

#include "inspect/folder_names.h"
#include "inspect/near_names.h"

#include <string>
#include <string_view>

namespace kiv {

/// Where a path ends.
struct WalkEnd {
    enum class Kind { file, folder, missing, outside };
    Kind kind = Kind::missing;
    std::string folder;   // absolute, in which the last name was looked for
    std::string name;     // as it is really spelled, or as it is missing; "" for the folder itself
    std::string spelling; // the whole path, real or nearest names put for its own; "": none is near
    bool is_misspelled = false; // in the case of letters

    std::string Path() const;
};

/// Follows `path`, whose names "/" parts, from an absolute folder on. One that leads above the
/// drive's root, or to what nobody may look at, ends outside. `kind` is what a name that is not
/// there may have been meant for.
WalkEnd Walk(FolderIndex& folders, std::string_view folder, std::string_view path, NameKind kind);

} // namespace kiv
