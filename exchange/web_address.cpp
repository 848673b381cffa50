#include "exchange/web_address.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

std::string BaseFault(std::string_view base)
{
    const bool has_scheme = StartsWithNoCase(base, "http://") || StartsWithNoCase(base, "https://");
    const std::string_view host =
        has_scheme ? base.substr(base.find("//") + 2) : std::string_view();
    const bool is_plain = std::ranges::all_of(base, [](char c) {
        return c > ' ' && c < '\x7f' && !Contains("<>\"'\\^`{|}", {&c, 1});
    });
    if (host.empty() || host.starts_with('/') || !is_plain || base.find_first_of("?#") != npos)
        return "an address such as https://host.example/museum/";
    return {};
}

std::string WebAddress(std::string_view base, std::string_view path)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr std::string_view kPlain = "-._~/";
    std::string address(base);
    if (!address.ends_with('/'))
        address.push_back('/');
    for (const char c : path) {
        const bool is_letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        if (is_letter || (c >= '0' && c <= '9') || Contains(kPlain, {&c, 1})) {
            address.push_back(c);
        } else if (c == '\\') {
            address.push_back('/');
        } else {
            const auto byte = static_cast<unsigned char>(c);
            address.push_back('%');
            address.push_back(kDigits[byte >> 4U]);
            address.push_back(kDigits[byte & 0xFU]);
        }
    }
    return address;
}

} // namespace kiv
