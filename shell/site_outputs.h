// The files of a site that visitors get: its pages, and what they show and lead to.
#pragma once

#include <string>
#include <vector>

namespace kiv {

class Workspace;

struct SiteOutputs {
    std::vector<std::string> files;  // that are there, absolute drive paths, each once
    std::vector<std::string> absent; // pages that the sources would make and that are not there
    std::vector<std::string> stale;  // pages that are there with other bytes than they would make
};

/// Builds the working directory and the members of its group in memory and looks at what is on the
/// disk. Pages come first, in the order of the page lists. Throws RunError when a build would end
/// in an error, or when there is nothing to build.
SiteOutputs OutputsOf(Workspace& workspace);

} // namespace kiv
