// What several utilities do to a text.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace kiv {

inline constexpr std::string_view kLineEnd = "\r\n";

/// Appends all pieces, with nothing between them.
inline void Append(std::string& text, std::initializer_list<std::string_view> pieces)
{
    for (const std::string_view piece : pieces)
        text.append(piece);
}

/// Takes the first line off `rest`, which must not be empty. CR LF, LF and a lone CR end a line; a
/// last line needs no end.
std::string_view TakeAnyLine(std::string_view& rest);

/// Every run of blanks (code 32) as one blank.
void CollapseBlanks(std::string& text);

/// Applies the character-to-entity table, row after row.
void ReplaceEntities(std::string& text);

} // namespace kiv
