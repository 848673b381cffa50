// The words of a table of rows, for those who tell of them and need not know what else a row holds.
#pragma once

#include <iterator>
#include <string_view>
#include <vector>

namespace kiv {

/// The words that stand in one column of `rows`, from top to bottom.
template <typename Rows, typename Row>
std::vector<std::string_view> ColumnOf(const Rows& rows, std::string_view Row::*column)
{
    std::vector<std::string_view> words;
    words.reserve(std::size(rows));
    for (const Row& row : rows)
        words.push_back(row.*column);
    return words;
}

} // namespace kiv
