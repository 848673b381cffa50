// The sources and texts of a site, for who works on all of them.
#pragma once

#include "exchange/encoded_text.h"

#include <string>
#include <vector>

namespace kiv {

class Workspace;

struct SiteSource {
    std::string path; // absolute drive path
    SourceKind kind;
};

struct SiteSources {
    std::vector<SiteSource> files;    // by path
    std::vector<std::string> outside; // that lie in no section's folder, or are links: not ours
};

/// Page list and template of the working directory and of the members of its group, what they put
/// in at every depth, also between "@@EOY" and "@@stop" lines, "_alt.txt" there and in the folders
/// right below, and the texts of the news. Throws RunError when there is nothing to look at.
SiteSources SourcesOf(Workspace& workspace);

} // namespace kiv
