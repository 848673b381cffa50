// Files that several programs write to, each at the end.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Adds `bytes` at the end of a file, which is made when missing. 0 or an error number; then
/// nothing of them is left, unless another program has written behind them, and all that others
/// wrote is there.
int AppendTo(const std::string& native, std::string_view bytes);

} // namespace kiv
