// The words and signs of server-side script, a line at a time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

enum class TokenKind { word, number, text, sign };

/// A word in lower case, a number, a sign, or the characters of a literal text, "" as one quote.
struct Token {
    TokenKind kind;
    std::string value;
};

/// A line of script cut into tokens; comments are gone. `faults` gets what no script may hold: a
/// text that does not end on its line, a character that is none of the language.
std::vector<Token> TokensOf(std::string_view line, std::vector<std::string>& faults);

} // namespace kiv::test
