// The reporter as the block expanders call it.
#pragma once

#include "platform/reporter.h"

#include <string_view>

namespace kiv {

/// `reportmsg` in function form; the result is always empty.
std::string_view reportmsgf(Reporter& reporter, std::string_view message);

/// Reports a fault in a block's structure: "BIG OOPS! " and the message. The result is always true.
bool bigoops(Reporter& reporter, std::string_view message);

} // namespace kiv
