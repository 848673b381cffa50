#include "exchange/page_comparison.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kShown = 60;

constexpr std::size_t kBefore = 20; // characters of that before the difference

/// What stands around the character (0-based) that differs.
std::string Shortened(std::string_view line, std::size_t at = 0)
{
    const std::size_t from = at > kShown - kBefore ? at - kBefore : 0;
    return (from > 0 ? "..." : "") + std::string(line.substr(from, kShown)) +
           (line.size() > from + kShown ? "..." : "");
}

} // namespace

std::string LikenessWords(const PageComparison& comparison)
{
    switch (comparison.likeness) {
    case Likeness::same_bytes:
        return "same bytes";
    case Likeness::same_lines:
        return "same but for line ends";
    case Likeness::different:
        break;
    }
    return "line " + std::to_string(comparison.line) + " differs";
}

PageComparison ComparePages(std::string_view old_bytes, std::string_view new_bytes)
{
    PageComparison comparison;
    if (old_bytes == new_bytes) {
        comparison.likeness = Likeness::same_bytes;
        return comparison;
    }
    while (!old_bytes.empty() && !new_bytes.empty()) {
        const std::string_view was = TakeLine(old_bytes);
        const std::string_view is = TakeLine(new_bytes);
        ++comparison.line;
        if (was != is) {
            const auto at = static_cast<std::size_t>(
                std::mismatch(was.begin(), was.end(), is.begin(), is.end()).first - was.begin());
            comparison.was = Shortened(was, at);
            comparison.is = Shortened(is, at);
            return comparison;
        }
    }
    if (old_bytes.empty() && new_bytes.empty()) {
        comparison.likeness = Likeness::same_lines;
        return comparison;
    }
    ++comparison.line;
    comparison.was = old_bytes.empty() ? "(the end)" : Shortened(TakeLine(old_bytes));
    comparison.is = new_bytes.empty() ? "(the end)" : Shortened(TakeLine(new_bytes));
    return comparison;
}

} // namespace kiv
