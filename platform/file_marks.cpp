#include "platform/file_marks.h"

#include "text/text.h"

#include <cstddef>

namespace kiv {

namespace {

/// Calls `take` with the letter of each mark and the position of its "%" (0-based), in order.
template <typename Take>
void ForEachMark(std::string_view text, const Take& take)
{
    for (std::size_t at = text.find('%'); at != npos && at + 1 < text.size();) {
        const char letter = text[at + 1];
        const bool is_mark = letter == 'f' || letter == 'l' || letter == '%';
        if (is_mark)
            take(letter, at);
        at = text.find('%', at + (is_mark ? 2 : 1));
    }
}

} // namespace

FileMarks MarksIn(std::string_view command)
{
    FileMarks marks;
    ForEachMark(command, [&](char letter, std::size_t) {
        marks.file = marks.file || letter == 'f';
        marks.line = marks.line || letter == 'l';
    });
    return marks;
}

std::string FillMarks(std::string_view text, std::string_view file, int line)
{
    std::string filled;
    std::size_t done = 0;
    ForEachMark(text, [&](char letter, std::size_t at) {
        filled.append(text, done, at - done);
        if (letter == 'f')
            filled.append(file);
        else if (letter == 'l')
            filled.append(std::to_string(line));
        else
            filled.push_back('%');
        done = at + 2;
    });
    return filled.append(text, done);
}

} // namespace kiv
