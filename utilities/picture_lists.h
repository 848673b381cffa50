// Picture lists ("picture sizer"): measures the pictures of a folder and writes image tags, picture
// boxes, bang calls and page entries for them.
#pragma once

#include "platform/machine.h"

#include <string>
#include <string_view>

namespace kiv {

/// Works in `folder`, which is empty (the current directory) or a folder below it, and returns to
/// the current directory. Merges the captions of "_alt.txt" and writes that file anew (what it
/// loses goes to "_alt.old.txt"), "_piclist.txt", the bang lists and "_pichtml.txt", then opens the
/// first two in the editor. Throws RunError: `subscript` past 3000 rows or for a missing field,
/// `invalid_argument` for an entry whose file has no ".", `picture` for one that cannot be read.
void run_picture_sizer(Machine& machine, std::string_view folder,
                       const std::string& editor_command);

} // namespace kiv
