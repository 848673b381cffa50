#include "platform/place.h"

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

} // namespace kiv
