#include "exchange/page_titles.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

using Titles = std::vector<std::string>;

constexpr std::size_t kTitleSamples = 7;

/// Whether `part` is one end of `title` and not all of it.
bool HasEnd(const std::string& title, std::string_view part, bool at_front)
{
    return title.size() > part.size() &&
           (at_front ? title.starts_with(part) : title.ends_with(part));
}

/// Whether most titles have it.
bool IsCommon(const Titles& titles, std::string_view part, bool at_front)
{
    const auto count = std::ranges::count_if(
        titles, [&](const std::string& title) { return HasEnd(title, part, at_front); });
    return static_cast<std::size_t>(count) * 10 >= titles.size() * 7;
}

/// The longest part, up to a blank, that most titles begin or end with.
std::string CommonEnd(const Titles& titles, bool at_front)
{
    std::string best;
    for (std::size_t i = 0; i < kTitleSamples && i < titles.size(); ++i) {
        const std::string& title =
            titles[i * titles.size() / std::min(kTitleSamples, titles.size())];
        for (std::size_t at = title.find(' '); at != npos; at = title.find(' ', at + 1)) {
            const std::string part = at_front ? title.substr(0, at + 1) : title.substr(at);
            if (part.size() > best.size() && IsCommon(titles, part, at_front))
                best = part;
        }
    }
    return best;
}

} // namespace

Titles ShortTitles(const Titles& titles)
{
    Titles shorter = titles;
    if (titles.size() < 2)
        return shorter;
    for (const bool at_front : {false, true}) {
        const std::string part = CommonEnd(shorter, at_front);
        for (std::string& title : shorter)
            if (!part.empty() && HasEnd(title, part, at_front))
                title = at_front ? title.substr(part.size())
                                 : title.substr(0, title.size() - part.size());
    }
    return shorter;
}

} // namespace kiv
