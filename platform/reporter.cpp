#include "platform/reporter.h"

namespace kiv {

std::string Place::Text() const
{
    std::string text;
    const auto add = [&](const std::string& piece) {
        if (!text.empty())
            text += ", ";
        text += piece;
    };
    if (file != nullptr)
        add(*file);
    if (line > 0)
        add("line " + std::to_string(line));
    if (page != nullptr)
        add("page " + *page);
    return text;
}

void Reporter::reportmsg(std::string_view text)
{
    Note(text, place);
    if (collect_messages)
        message_log.append(text).append("<P>");
    else
        Show(text);
}

} // namespace kiv
