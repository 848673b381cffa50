#include "exchange/shared_lines.h"

#include "text/text.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace kiv {

namespace {

using Hashes = std::vector<std::size_t>;

// A long line tells no more than a good sentence.
constexpr std::size_t kMostWeight = 40;

Hashes HashesOf(const std::vector<std::string_view>& lines)
{
    Hashes hashes;
    for (const std::string_view line : lines)
        hashes.push_back(std::hash<std::string_view>()(line));
    return hashes;
}

/// Weights of the best matches of all ends of two texts, a row for each line of the first.
class MatchTable {
  public:
    MatchTable(std::size_t rows, std::size_t columns)
        : columns_(columns + 1), cells_((rows + 1) * (columns + 1))
    {
    }
    std::uint32_t& At(std::size_t row, std::size_t column)
    {
        return cells_[row * columns_ + column];
    }

  private:
    std::size_t columns_;
    std::vector<std::uint32_t> cells_;
};

std::uint32_t WeightOf(std::string_view line)
{
    return static_cast<std::uint32_t>(1 + std::min(line.size(), kMostWeight));
}

MatchTable Weigh(const std::vector<std::string_view>& pattern, const Hashes& wanted,
                 const Hashes& there)
{
    MatchTable table(wanted.size(), there.size());
    for (std::size_t i = wanted.size(); i-- > 0;)
        for (std::size_t j = there.size(); j-- > 0;) {
            std::uint32_t best = std::max(table.At(i + 1, j), table.At(i, j + 1));
            if (wanted[i] == there[j])
                best = std::max(best, table.At(i + 1, j + 1) + WeightOf(pattern[i]));
            table.At(i, j) = best;
        }
    return table;
}

} // namespace

std::vector<std::size_t> MatchLines(const std::vector<std::string_view>& pattern,
                                    const std::vector<std::string_view>& lines)
{
    const Hashes wanted = HashesOf(pattern);
    const Hashes there = HashesOf(lines);
    MatchTable table = Weigh(pattern, wanted, there);
    std::vector<std::size_t> matches(pattern.size(), npos);
    for (std::size_t i = 0, j = 0; i < pattern.size() && j < lines.size();) {
        const bool is_match = wanted[i] == there[j] &&
                              table.At(i, j) == table.At(i + 1, j + 1) + WeightOf(pattern[i]);
        if (is_match)
            matches[i] = j;
        if (is_match || table.At(i, j) == table.At(i + 1, j))
            j += is_match ? 1U : 0U, ++i;
        else
            ++j;
    }
    return matches;
}

} // namespace kiv
