// From an element on a page to the source line that has it.
#pragma once

#include "shell/page_stories.h"

#include <cstddef>
#include <optional>

namespace kiv {

/// Where the tag that begins in a line of the page (0-based index) at a column (1-based) was
/// written: in the line's source, in the definition that brought it there, or in the line of a
/// block that became this one. Nothing when no source has it.
std::optional<ToldPlace> SourceOfElement(const PageStories& page, std::size_t line,
                                         std::size_t column);

} // namespace kiv
