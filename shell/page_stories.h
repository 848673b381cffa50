// A page as a build would make it now, each of its lines with its story, for a face that shows
// them. Lines that were made together share one story.
#pragma once

#include "shell/line_stories.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

/// A page of a build.
struct BuiltPage {
    std::string name; // its file's, as the page list has it
    std::string path; // absolute drive path

    bool operator==(const BuiltPage&) const = default;
};

struct PageStep {
    std::string name; // what did it: "=2=", "@PREV", "!!3["
    std::string text; // what happened
    std::string after;
    std::optional<ToldPlace> from; // the definition used
};

/// How lines that stand one below the other on a page came about.
struct PageStory {
    std::vector<ToldPlace> sources; // first the lines that `before` shows
    std::string before;             // lines are joined by CR LF
    std::vector<PageStep> steps;
    int count = 0;      // of its lines on the page
    std::string reason; // why nothing was written
};

struct PageLine {
    int number = 0; // 1-based; 0: an error ended the build in it, and it was never written
    std::string text;
    std::size_t story = 0; // 0-based
    int of_story = 1;      // which one of its story's lines, 1-based
};

struct PageStories {
    std::vector<BuiltPage> pages; // all of the build, in its order
    BuiltPage page;               // whose lines these are; "": there is no page at all
    std::string folder;           // that was built, ends in "\"
    std::vector<PageLine> lines;
    std::vector<PageStory> stories;
    std::string
        trouble; // why there is no page, or what ended the build, as sentences; "": all went well
};

/// Builds the working directory in memory, without a word to the user, and gives the page at `path`
/// (an absolute drive path), or the first page when there is none. `folder` is another section that
/// is to be built instead, such as a member of the group; "": none. Never throws RunError.
PageStories TellPage(Workspace& workspace, std::string_view path, std::string_view folder = {});

} // namespace kiv
