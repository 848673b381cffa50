// Files for feed readers and search engines, of what the page lists know.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

class Workspace;

// All of these look at the section in the working directory and the members of its group, built in
// memory, and write into the folder of "@DIR1" where the page list has one, else the working
// directory. `base` is the address of that folder. What is there already and was not made so is
// left alone. Throw RunError of kind `file` then, when a page of the list has the name, when no
// page is there, and what ends a build.

/// Writes rss.xml (RSS 2.0) and atom.xml: the news, or where there are none the pages by the time
/// of their files; thirty at most, the newest first.
void WriteFeeds(Workspace& workspace, std::string_view base);

/// Writes sitemap.xml: every page but those with "@NOINDEX" and those that lead on to another one.
void WriteSiteMapXml(Workspace& workspace, std::string_view base);

} // namespace kiv
