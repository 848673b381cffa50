// "<zuquiz2>": a form whose radio buttons write feedback into a text box.
#include "blocks/fragments.h"
#include "blocks/quizzes.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <string_view>

namespace kiv {

namespace {

constexpr std::string_view kQuizFont = R"(<font face="geneva,arial,helvetica,helv" size=2>)";

constexpr std::string_view kFormHead =
    R"(<table width="100%" border=0 cellspacing=0 cellpadding=0 border=0><tr><td>)";
constexpr std::string_view kFormTail = "</td></tr></table><p>";

/// A self-check quiz while its block is read.
struct SelfCheck {
    std::string output;
    int question = 0;
    std::size_t rows = 0; // of a feedback box: grows over the whole block, never begins anew
};

/// The feedback box of the question in work.
std::string TextBox(const SelfCheck& quiz)
{
    return "</font><textarea wrap=physical rows=\"" + Decimal(static_cast<long long>(quiz.rows)) +
           "\" cols=\"45\" NAME=feedback" + Decimal(quiz.question) + "></textarea>";
}

/// Closes the question before, if there is one, and opens the next.
void AppendQuestion(SelfCheck& quiz, std::string_view opening, std::string_view text)
{
    if (quiz.question > 0)
        quiz.output.append(kCrLf).append(TextBox(quiz)).append(kQuizFont).append("</UL>");
    ++quiz.question;
    quiz.output.append(kCrLf).append(opening).append(Trim(text)).append("</B><UL>").append(kCrLf);
}

/// `bar` is the position of the "|" that parts answer and feedback.
void AppendAnswer(SelfCheck& quiz, std::string_view line, std::size_t bar)
{
    constexpr char kRightSingleQuote = '\x92';
    constexpr std::size_t kCharactersPerRow = 40;

    std::string feedback(line.substr(bar + 1));
    std::replace(feedback.begin(), feedback.end(), '\'', kRightSingleQuote);
    quiz.rows = std::max(quiz.rows, feedback.size() / kCharactersPerRow + 1);
    const std::string number = Decimal(quiz.question);
    quiz.output.append(kCrLf).append("<INPUT TYPE=radio name=").append(number);
    quiz.output.append(" onclick=\"form.feedback").append(number).append(".value='");
    quiz.output.append(feedback).append("'\">").append(line.substr(0, bar)).append("<BR>");
}

std::string Close(const SelfCheck& quiz)
{
    std::string form(kFormHead);
    form.append(kCrLf).append("<FORM>").append(kQuizFont);
    form.append(kCrLf).append(quiz.output);
    form.append(kCrLf).append(TextBox(quiz));
    form.append(kCrLf).append("</UL></FORM>");
    return form.append(kCrLf).append(kFormTail);
}

bool EndsSelfCheck(std::string_view line)
{
    return std::ranges::any_of(kSelfCheckEnds,
                               [&](std::string_view end) { return line.starts_with(end); });
}

} // namespace

void zuquiz2(std::string& line, BlockContext& context)
{
    SelfCheck quiz;
    for (;;) {
        line = context.lines.Next();
        if (EndsSelfCheck(line)) {
            line = Close(quiz);
            return;
        }
        if (StartsWithNoCase(line, "Q:")) {
            AppendQuestion(quiz, "<P><B>Question: ", FromChar(line, 3));
            continue;
        }
        if (line.starts_with("::")) {
            AppendQuestion(quiz, "<P><B>", FromChar(line, 3));
            continue;
        }
        line = QuoteEscape(line);
        const std::size_t bar = line.find('|');
        if (bar == npos) {
            context.reportmsg("Oops! zuquiz2");
            return;
        }
        AppendAnswer(quiz, line, bar);
    }
}

} // namespace kiv
