// Quizzes: "<zuquiz1>", played by a script of the user's own, and "<zuquiz2>", a self-check form.
#pragma once

#include "blocks/dispatcher.h"

#include <string>
#include <string_view>

namespace kiv {

/// A line that begins so ends a quiz of the one kind or the other.
inline constexpr std::string_view kQuizEnd = "</zuquiz1>";
inline constexpr std::string_view kSelfCheckEnds[] = {"</zuquiz2>", "</zucheck", "</zucyk"};

/// Reads a quiz up to "</zuquiz1>" and puts its answer lists, the quiz script read from
/// "c:\utils\quiz.txt" and a link that starts it into `line`.
void zuquiz1(std::string& line, BlockContext& context);

/// Reads a quiz up to "</zuquiz2>" and puts the form into `line`. A line that is neither question
/// nor answer is reported, and `line` holds it with its quotes escaped.
void zuquiz2(std::string& line, BlockContext& context);

} // namespace kiv
