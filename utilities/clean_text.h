// What several utilities do to a text.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Takes the first line off `rest`, which must not be empty. CR LF, LF and a lone CR end a line; a
/// last line needs no end.
std::string_view TakeAnyLine(std::string_view& rest);

/// Every run of blanks (code 32) as one blank.
void CollapseBlanks(std::string& text);

/// Applies the character-to-entity table, row after row.
void ReplaceEntities(std::string& text);

} // namespace kiv
