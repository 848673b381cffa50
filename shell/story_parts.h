// A line's story cut into what is read one after the other.
#pragma once

#include "shell/page_stories.h"
#include "text/changed_part.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What a story shows of a text at most, in characters.
inline constexpr std::size_t kMostShownOfText = 4000;

struct StoryPart {
    enum class Kind { source, step, result };
    Kind kind = Kind::source;
    std::string title;  // where it stands, "_html.txt:12" or "index.htm:3"; of a step its name
    std::string words;  // what happened
    std::string text;   // as it then stood; of a long one what is around its change, between "..."
    ChangedPart change; // of a step: what of `text` is new
    std::string taken;  // what a step took out and put nothing for
    std::optional<ToldPlace> place; // in the sources, where there is one
};

/// The story of a line, a 0-based index: its sources, its steps, and the line itself.
std::vector<StoryPart> PartsOf(const PageStories& page, std::size_t line);

/// "_html.txt:12", or "_html.txt:12-15": the file as one says it in `folder`, which ends in "\".
std::string PlaceWords(const ToldPlace& place, std::string_view folder);

} // namespace kiv
