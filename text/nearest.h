// The word that was most likely meant by a misspelled one.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// How many letters must be put in, left out, exchanged or swapped with their neighbour to make one
/// word of the other; `most` + 1 when it is more than `most`. Costs as many steps as the one has
/// letters times those of the other, and fewer when they are far apart.
std::size_t EditDistance(std::string_view from, std::string_view to,
                         std::size_t most = std::numeric_limits<std::size_t>::max() - 1);

/// The word of `words` that was most likely meant, whatever the case; "" when none is near: more
/// than a third of its letters would have to change, or it has more than a hundred.
std::string_view Nearest(std::string_view misspelled, std::span<const std::string_view> words);

/// The question whether `word` was meant; "" when there is none.
std::string DidYouMean(std::string_view word);

} // namespace kiv
