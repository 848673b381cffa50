// A page's own policy, which may forbid the script of the preview.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// Where a policy stands in the tag of a META; `size` 0: nowhere. 0-based.
struct PolicySpot {
    std::size_t at = 0;
    std::size_t size = 0;
};
/// `tag`: what stands behind the tag's name, up to its ">".
PolicySpot PolicyIn(std::string_view tag);

/// The policy with `own` (an address that ends in "/") as a further source of script and of what
/// script may connect to, where these have sources at all. `nonce` is
/// that of the script's element, for policies that take no addresses.
std::string LoosenedPolicy(std::string_view policy, std::string_view own, std::string_view nonce);

} // namespace kiv
