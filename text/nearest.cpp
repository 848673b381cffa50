#include "text/nearest.h"

#include "text/joined_text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kLongest = 100; // letters; nobody is told the name of a longer one

} // namespace

std::size_t EditDistance(std::string_view from, std::string_view to, std::size_t most)
{
    std::vector<std::size_t> before_last(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    std::size_t least = 0; // of the last row
    for (std::size_t i = 1; i <= from.size(); ++i) {
        before_last.swap(last);
        last.swap(row);
        const std::size_t least_before = least;
        row[0] = least = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t exchanged = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, exchanged});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[j] = std::min(row[j], before_last[j - 2] + 1);
            least = std::min(least, row[j]);
        }
        if (std::min(least, least_before) > most)
            return most + 1; // whatever follows
    }
    return std::min(row.back(), most + 1);
}

std::string_view Nearest(std::string_view misspelled, std::span<const std::string_view> words)
{
    if (misspelled.size() > kLongest)
        return {};
    const std::string lower = LowerCase(misspelled);
    std::string_view nearest;
    std::size_t least = misspelled.size() / 3 + 1; // more is another word
    for (const std::string_view word : words) {
        const std::size_t longer = std::max(word.size(), lower.size());
        if (longer - std::min(word.size(), lower.size()) >= least)
            continue; // so many letters are missing already
        const std::size_t distance = EditDistance(lower, LowerCase(word), least);
        if (distance < least) {
            least = distance;
            nearest = word;
        }
    }
    return nearest;
}

std::string DidYouMean(std::string_view word)
{
    return word.empty() ? std::string() : Joined({"did you mean \"", word, "\"?"});
}

} // namespace kiv
