// Quizzes: "<zuquiz1>", played by a script of the user's own, and "<zuquiz2>", a self-check form.
#pragma once

#include "blocks/dispatcher.h"

#include <string>

namespace kiv {

/// Reads a quiz up to "</zuquiz1>" and puts its answer lists, the quiz script read from
/// "c:\utils\quiz.txt" and a link that starts it into `line`.
void zuquiz1(std::string& line, BlockContext& context);

/// Reads a quiz up to "</zuquiz2>" and puts the form into `line`. A line that is neither question
/// nor answer is reported, and `line` holds it with its quotes escaped.
void zuquiz2(std::string& line, BlockContext& context);

} // namespace kiv
