// A text many times over.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

inline std::string Repeated(std::size_t count, std::string_view text)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace kiv
