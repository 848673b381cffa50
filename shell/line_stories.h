// Where the lines of pages come from and what made them so, and where the lines of a source went.
#pragma once

#include "platform/run_error.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Files;
class Reporter;
class Workspace;

/// Lines of a source, 1-based, both ends included.
struct ToldPlace {
    std::string file; // absolute drive path
    int first = 0;
    int last = 0;
    std::string native = {}; // the path outside, UTF-8; "" where no drive leads there
    std::string shown = {};  // the path from the site's folder on, where it lies in it
};

/// The name of the step that takes one line out of all that a source line made.
inline constexpr std::string_view kLineStep = "line";

/// One thing that was done to a line.
struct ToldStep {
    std::string name; // what did it: "=2=", "@PREV", "!!3["
    std::string text; // what happened
    std::string before;
    std::string after;
    std::optional<ToldPlace> from; // the definition used
};

/// The story of a line of a page, or of source lines that wrote nothing.
struct ToldLine {
    std::string page;       // its file's name; "": source lines that came to no page
    std::string page_path;  // absolute drive path
    std::string page_shown; // the same from the site's folder on, where it lies in it
    int line = 0;           // 1-based; 0: nothing was written
    std::string text;       // of the line; of source lines that wrote nothing, what they are
    std::vector<ToldPlace> sources;
    std::string reason; // why nothing was written
    std::vector<ToldStep> steps;
    bool is_brief = false; // the steps have no texts: all stories together would be too long
};

/// What is asked.
struct StoryQuestion {
    std::string place;                    // a page or a source, as a person names it
    std::vector<std::string> paths = {};  // drive paths that it may be as well
    int line = 0;                         // 1-based; 0: every line
    std::optional<std::string> find = {}; // only lines that hold it, whatever the case
};

struct Stories {
    enum class Kind { none, page, source };
    Kind kind = Kind::none;         // what `place` is
    std::string name;               // the page's file, or the source's path
    std::string path;               // absolute drive path
    std::string shown;              // the same from the site's folder on, where it lies in it
    int line_count = 0;             // of the page or the source, as far as it was read
    std::vector<ToldLine> lines;    // what was asked for
    std::size_t left_out = 0;       // more of them, for which there is no room
    std::vector<std::string> names; // when it is neither: all pages and sources
    std::optional<RunError> error; // that ended the build; what came before it is told all the same
};

/// The nearest folder with a page list at or above the one of an absolute path; "" when there is
/// none.
std::string SectionOf(Files& files, std::string_view path);

/// Builds the working directory in memory and tells what is asked. `reporter` is told what the
/// build has to say. Throws RunError when the build ends in an error before it came to what is
/// asked.
Stories TellStories(Workspace& workspace, const StoryQuestion& question, Reporter& reporter);

} // namespace kiv
