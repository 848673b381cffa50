// The stories of lines as a person reads them.
#pragma once

#include "shell/line_stories.h"

#include <iosfwd>

namespace kiv {

/// How stories are shown.
struct StoryView {
    int line = 0;         // that was asked for; 0: every one
    bool is_long = false; // each line with all that was done to it
    bool colour = false;  // for a terminal
};

/// Prints each line of a page with its source, or its whole story; of a source where its lines
/// went. Nothing of the site steers a terminal.
void PrintStories(std::ostream& out, const Stories& stories, const StoryView& view);

} // namespace kiv
