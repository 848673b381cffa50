// Which lines of one page stand on others, too, in the same order.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// For each line of `pattern` the number of the line of `lines` that it is, from 0, or npos. The
/// lines that are found keep their order, and together they are as long as they can be.
std::vector<std::size_t> MatchLines(const std::vector<std::string_view>& pattern,
                                    const std::vector<std::string_view>& lines);

} // namespace kiv
