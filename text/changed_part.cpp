#include "text/changed_part.h"

#include <algorithm>

namespace kiv {

ChangedPart ChangeBetween(std::string_view before, std::string_view after)
{
    const auto at = std::ranges::mismatch(before, after);
    const auto from = static_cast<std::size_t>(at.in1 - before.begin());
    before.remove_prefix(from);
    after.remove_prefix(from);
    while (!before.empty() && !after.empty() && before.back() == after.back()) {
        before.remove_suffix(1);
        after.remove_suffix(1);
    }
    return {from, before.size(), after.size()};
}

} // namespace kiv
