// "<zuquiz1>": answer lists for a quiz script.
#include "blocks/fragments.h"
#include "blocks/quizzes.h"
#include "platform/file_errors.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <span>
#include <string_view>
#include <vector>

namespace kiv {

namespace {

/// The two arrays of the quiz script: for each question the wrong answers, and the question with
/// its right ones. The parts of an entry are joined by "<TAB>", for the script to cut.
struct AnswerLists {
    std::string killers;
    std::string answers;
};

constexpr std::string_view kHowToGetScript =
    "A quiz brings a script of your own: write it into this file, and build again.";

/// A part of an entry, fit to stand in single quotes.
std::string ScriptText(std::string_view part)
{
    std::string text = QuoteEscape(part);
    ReplaceEach(text, "'", "\\'");
    return text;
}

/// The entries of one question: its text, then the answers; those with a star are right.
void AppendEntries(AnswerLists& lists, std::string_view line)
{
    constexpr std::string_view kJoint = "<TAB>";

    std::string text(line);
    ReplaceEach(text, kJoint, "\t"); // the word and the character part alike
    const std::vector<std::string_view> parts = Split(text, '\t');
    std::string right = ScriptText(parts.front());
    std::string wrong;
    for (const std::string_view part : std::span(parts).subspan(1)) {
        const bool star = part.starts_with('*');
        (star ? right : wrong).append(kJoint).append(ScriptText(part.substr(star ? 1 : 0)));
    }
    if (!wrong.empty())
        wrong.erase(0, kJoint.size());
    lists.killers.append("'").append(wrong).append("',"); // a comma after the last one, too
    lists.answers.append(lists.answers.empty() ? "'" : ",'").append(right).append("'");
}

} // namespace

void zuquiz1(std::string& line, BlockContext& context)
{
    AnswerLists lists;
    for (;;) {
        const std::string_view text = context.lines.Next();
        if (text.starts_with(kQuizEnd))
            break;
        if (!text.empty())
            AppendEntries(lists, text);
    }
    line = "<SCRIPT LANGUAGE=\"JavaScript\">\r\nvar killers = new Array(";
    line.append(lists.killers).append(");\r\nvar answers = new Array(").append(lists.answers);
    line.append(");\r\n")
        .append(ReadNeeded(context.files, kQuizScriptFile, kHowToGetScript))
        .append(kCrLf);
    line.append("<A HREF=\"javascript: itemReset(); startQuiz(true, 0);\">"
                "<B>QUIZ TIME: @TITLE</B></A>");
}

} // namespace kiv
