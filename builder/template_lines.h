// The lines of the template, which tell on which pages they stand.
#pragma once

#include "builder/merge_steps.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct BuildState;
struct MetaTag;
struct PageRecord;

/// Takes a template line through its own steps and the merge, and writes it to the page's output,
/// unless it ends up empty.
void WriteTemplateLine(MergedLine& line);

/// How long a position code such as "=1=" is.
inline constexpr std::size_t kPositionCode = 3;

/// Whether a line that begins with "=", `code` and "=" stands on the current page. Nothing for a
/// code that is none, but text.
std::optional<bool> StandsHere(char code, const BuildState& state);

/// The tags of a template line that a page's own keywords and description take the place of.
std::vector<const MetaTag*> MetaTagsIn(std::string_view line);

enum class MetaWriting {
    stays,     // the page has no value for it
    written,   // the page's own tag stands in the place of the line
    has_marks, // nothing is written: the value is for the steps
};
/// Writes the page's own tag for a line that holds `tags`.
MetaWriting WriteMetaTag(std::span<const MetaTag* const> tags, const PageRecord& page,
                         std::string& output);

} // namespace kiv
