// The addresses that a style sheet names.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct CssAddress {
    std::string address; // without quotes
    std::size_t at = 0;  // 0-based, where it begins
    bool is_import = false;
};

/// Those of "url(…)" and "@import", in their order; what stands in comments is passed over.
std::vector<CssAddress> CssAddresses(std::string_view css);

} // namespace kiv
