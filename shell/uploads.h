// Sends what has changed to a server by the program that the upload list names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

/// A command of the upload list without "@@" is run once, with the names of the files on its
/// standard input, one a line; with "@@" once for each file.
bool RunsForEachFile(std::string_view command);

/// The command for one file: its name in the place of each "@@", in quotes where it needs them.
std::string UploadLine(std::string_view command, std::string_view name);

struct UploadPlan {
    std::string command; // of the upload list
    std::vector<std::string>
        names;                     // of what is to be sent: from the working directory on, with "/"
    std::vector<std::string> keys; // of their bytes
    std::vector<std::string> gone; // sent once, and not among the site's files any more
    std::size_t all = 0;           // files that the site has
};

/// What an upload of the working directory would send: the pages of its lists, and what they show
/// and lead to, as far as it was not sent with these very bytes. Warns of pages that are to be
/// built first. Throws RunError of kind `file` when the upload list has no command for the folder,
/// and what ends a build in memory.
UploadPlan PlanUpload(Workspace& workspace);

/// Sends it. What has arrived is on record at once, so that the next upload takes up one that
/// failed. Throws RunError of kind `file` when there is no such program or it ends with another
/// code than 0.
void Upload(Workspace& workspace);

/// The command lines of a plan: one, or one for each file.
std::vector<std::string> UploadLines(const UploadPlan& plan);

/// The same as a text (UTF-8), a line each; a single command is followed by the names that it gets.
std::string PlanText(const UploadPlan& plan);

} // namespace kiv
