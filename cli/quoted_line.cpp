#include "cli/quoted_line.h"

#include "text/text.h"

#include <algorithm>
#include <vector>

namespace kiv {

namespace {

// A message may quote a line of megabytes, and so may a thousand of them.
constexpr std::size_t kLongestWords = 40;
constexpr std::size_t kFarthestSpot = 64 * std::size_t{1024};
constexpr std::size_t kBeforeSpot = 30;
constexpr std::string_view kGap = "...";

std::string_view WithoutBlanks(std::string_view words)
{
    while (!words.empty() && words.front() == ' ')
        words.remove_prefix(1);
    while (!words.empty() && (words.back() == ' ' || words.back() == '.'))
        words.remove_suffix(1);
    return words;
}

/// What a message may have taken from the line, the likeliest first.
std::vector<std::string_view> WordsOfLine(std::string_view message)
{
    std::vector<std::string_view> words;
    message = message.substr(0, kFarthestSpot);
    const std::size_t quote = message.find('"');
    const std::size_t end = quote == npos ? npos : message.find('"', quote + 1);
    if (end != npos)
        words.push_back(message.substr(quote + 1, end - quote - 1));
    if (const std::size_t colon = message.find(": "); colon != npos)
        words.push_back(message.substr(colon + 2));
    words.push_back(message);
    for (std::string_view& some : words) {
        some = some.substr(0, some.find_first_of("\r\n"));
        some = WithoutBlanks(some.substr(0, kLongestWords));
    }
    return words;
}

/// 0 when the message tells of no spot.
std::size_t SpotIn(std::string_view line, std::string_view message)
{
    const std::string_view searched = line.substr(0, kFarthestSpot);
    for (const std::string_view words : WordsOfLine(message)) {
        const std::size_t spot = words.empty() ? npos : searched.find(words);
        if (spot != npos)
            return spot;
    }
    return 0;
}

} // namespace

std::string QuotedLine(std::string_view line, std::string_view message)
{
    if (line.size() <= kQuotedSize)
        return std::string(line);
    const std::size_t spot = SpotIn(line, message);
    const std::size_t begin =
        std::min(spot > kBeforeSpot ? spot - kBeforeSpot : 0, line.size() - kQuotedSize);
    std::string quoted(begin > 0 ? kGap : "");
    quoted.append(line.substr(begin, kQuotedSize));
    return quoted.append(begin + kQuotedSize < line.size() ? kGap : "");
}

} // namespace kiv
