// What a window offers as long as no folder of a site was stored or chosen.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

class Workspace;

struct FirstSteps {
    std::string start_site; // the folder that the program was started in, when it is a site's
    bool has_example = false;
    bool editor_is_missing = false;
};

/// Nothing once there is a folder to work in. Never throws RunError.
std::optional<FirstSteps> FirstStepsOf(Workspace& workspace);

/// Begins a site in a folder (a drive path), which is made when it is missing, and goes there. What
/// is in it already stays. Throws RunError.
void BeginSiteIn(Workspace& workspace, std::string_view folder);

/// Copies the example below a folder (a drive path) and goes to the copy. A file that is there
/// already stays as it is, so that a copy that was cut short is finished and one that was worked on
/// is opened. Throws RunError of kind `file`.
void OpenExampleIn(Workspace& workspace, std::string_view folder);

} // namespace kiv
