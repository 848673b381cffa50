// The group list of a site, "_group.txt": its entries, and what is done for each of its folders
// besides building it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Files;
class Workspace;

/// The entries of the current directory's group list that are not empty, as written. Throws
/// RunError of kind `file` when there is no list.
std::vector<std::string> GroupEntries(Files& files);

/// Merges the site maps of the working directory and its group into "_sitemap-master.txt" and opens
/// it in the editor. Does nothing without a group list. Throws RunError of kind `file` when a site
/// map is missing.
void sitemapmaster(Workspace& workspace);

/// Opens `file` of every folder of the group in the editor. Does nothing without a group list.
void groupedit(Workspace& workspace, std::string_view file);

} // namespace kiv
