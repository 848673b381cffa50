// Windows-1252, the one code page of kiv above the platform floor: a byte is a character.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// Upper or lower case of one character; characters without a partner in the code page stay.
char ToUpper(char c);
char ToLower(char c);

/// The whole text in upper or lower case.
std::string UpperCase(std::string_view text);
std::string LowerCase(std::string_view text);

/// The Unicode code point of a character. The five codes that have none stand for U+0081 and so on.
char32_t CodePoint(char c);

/// One character of a UTF-8 text.
struct Utf8Character {
    char32_t point = 0;
    std::size_t size = 0; // in bytes; 0: no valid sequence begins here
};

/// The first character of a text that is not empty. Overlong forms, surrogates and values past
/// U+10FFFF are not valid.
Utf8Character FirstUtf8(std::string_view utf8);

/// Appends a character, a surrogate too.
void AppendUtf8(std::string& utf8, char32_t point);

/// Windows-1252 to UTF-8.
std::string ToUtf8(std::string_view text);

/// UTF-8 to Windows-1252. A character that the code page lacks becomes a decimal reference
/// ("&#20013;"); a byte that is part of no valid sequence is taken as the character of that code,
/// so nothing is lost.
std::string FromUtf8(std::string_view utf8);

/// Windows-1252 to UTF-8, for a text that was made from `original` (UTF-8): a reference that
/// FromUtf8 put in place of a character of `original` becomes that character again.
std::string ToUtf8Keeping(std::string_view text, std::string_view original);

} // namespace kiv
