#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Appends one record and its line end to an output.
inline void WriteLine(std::string& output, std::string_view record)
{
    output.append(record).append("\r\n", 2);
}

} // namespace kiv
