// The items of the news, as the composer puts them into a page list.
#pragma once

#include "exchange/web_date.h"

#include <optional>
#include <string_view>

namespace kiv {

/// The six values of a news line. Texts are as the list has them.
struct NewsLine {
    WebTime time = 0;
    std::string_view file; // the page's, without extension
    std::string_view title;
    std::string_view byline;
    std::string_view newspaper;
    std::string_view subhead;
};

/// "!!1[March 5, 2004|pr030504|Title|Byline|Newspaper|Subhead]", alone on its line; nothing for any
/// other line.
std::optional<NewsLine> ReadNewsLine(std::string_view line);

} // namespace kiv
