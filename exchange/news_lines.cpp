#include "exchange/news_lines.h"

#include "text/text.h"

#include <vector>

namespace kiv {

std::optional<NewsLine> ReadNewsLine(std::string_view line)
{
    constexpr std::string_view kHead = "!!1[";
    constexpr std::size_t kFields = 6;
    line = Trim(line);
    if (!line.starts_with(kHead) || !line.ends_with(']'))
        return std::nullopt;
    line = line.substr(kHead.size(), line.size() - kHead.size() - 1);
    std::vector<std::string_view> fields = Split(line, '|');
    if (line.ends_with('|')) // a last field that is empty
        fields.resize(kFields);
    if (fields.size() != kFields || Trim(fields[1]).empty())
        return std::nullopt;
    const std::optional<WebTime> time = TimeOfNewsDate(fields[0]);
    if (!time)
        return std::nullopt;
    return NewsLine{*time, Trim(fields[1]), fields[2], fields[3], fields[4], fields[5]};
}

} // namespace kiv
