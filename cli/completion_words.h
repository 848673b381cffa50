// What the completions for all shells say of the rows of calls.
#pragma once

#include "cli/call_table.h"

#include <string>
#include <string_view>

namespace kiv {

/// Appends a word, with `between` before it when it is not the first.
void AddWord(std::string& words, std::string_view word, std::string_view between = " ");

/// The only values that an option or an argument takes, a blank between two; "" when there is no
/// such list.
std::string ChoiceWords(const OptionRow& row);
/// What the value of an option lists, in the same way.
std::string ListedWords(const OptionRow& row, std::string_view between = " ");

/// The global options that a value follows, with `between` between two.
std::string GlobalOptionsWithValue(std::string_view between);

/// `text` with `mark` before each character that is one of `special`.
std::string WithMarks(std::string_view text, std::string_view special, char mark);

} // namespace kiv
