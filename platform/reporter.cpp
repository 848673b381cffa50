#include "platform/reporter.h"

namespace kiv {

std::string Place::Text() const
{
    std::string text(file);
    const auto add = [&](std::string_view word, std::string_view value) {
        if (!text.empty())
            text += ", ";
        text.append(word).append(value);
    };
    if (line > 0)
        add("line ", std::to_string(line));
    if (!page.empty())
        add("page ", page);
    return text;
}

Warning::Warning(std::string_view warning_text, const Place& where, bool shown)
    : text(warning_text), file(where.file), line(where.line), page(where.page), was_shown(shown)
{
}

std::string Warning::PlaceText() const
{
    return Place{file, line, page}.Text();
}

void Reporter::reportmsg(std::string_view text, const Place& where)
{
    warnings_.emplace_back(text, where, true);
    Show(text);
}

void Reporter::Note(std::string_view text, const Place& where)
{
    warnings_.emplace_back(text, where, false).is_noted = true;
}

void Reporter::Withhold(std::string_view text, const Place& where)
{
    warnings_.emplace_back(text, where, false);
}

} // namespace kiv
