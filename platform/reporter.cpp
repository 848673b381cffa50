#include "platform/reporter.h"

#include "platform/run_error.h"

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
        add(line > 0 ? LineInFile(*file, line) : *file);
    if (page != nullptr)
        add("page " + *page);
    return text;
}

Warning::Warning(std::string_view warning_text, const Place& where)
    : text(warning_text), file(where.file != nullptr ? *where.file : std::string()),
      line(where.line), page(where.page != nullptr ? *where.page : std::string())
{
}

std::string Warning::PlaceText() const
{
    Place place;
    if (!file.empty())
        place.file = &file;
    place.line = line;
    if (!page.empty())
        place.page = &page;
    return place.Text();
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
