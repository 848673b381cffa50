#include "text/text_key.h"

#include <cstdint>

namespace kiv {

std::string TextKey(std::string_view text)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3U;
    }
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string key;
    for (int place = 60; place >= 0; place -= 4)
        key.push_back(kDigits[(hash >> static_cast<unsigned>(place)) & 0xFU]);
    return key;
}

} // namespace kiv
