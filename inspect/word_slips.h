// When a word most likely is another one, misspelled.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// Whether `word` is `known` with a slip of the pen in it, whatever the case: one letter more, less
/// or exchanged, or two swapped; in words of seven letters and more, two such. Words of fewer than
/// `shortest` letters are never taken for others, and no word is a slip of itself.
bool IsSlipOf(std::string_view word, std::string_view known, std::size_t shortest);

/// The one of `words` that `word` is a slip of, the nearest first; "": none.
std::string_view SlipOf(std::string_view word, std::span<const std::string_view> words,
                        std::size_t shortest);

/// Whether no letter of "a" to "z" is in it.
bool IsUpperCase(std::string_view word);

/// A character of the words that directives and at-variables are made of: "A" to "Z" in any case,
/// "0" to "9", "_".
bool IsWordCharacter(char c);

/// The letters of a text, "A" to "Z", in upper case; all else is left out.
std::string Letters(std::string_view text);

/// The word that `text` begins with.
std::string_view HeadWord(std::string_view text);

} // namespace kiv
