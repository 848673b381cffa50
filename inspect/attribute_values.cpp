#include "inspect/attribute_values.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <string>

namespace kiv {

std::vector<std::string_view> SourceSetAddresses(std::string_view value)
{
    std::vector<std::string_view> addresses;
    while (true) {
        value.remove_prefix(std::min(value.find_first_not_of(" \t\r\n\f,"), value.size()));
        if (value.empty())
            return addresses;
        const std::size_t size = std::min(value.find_first_of(kHtmlBlanks), value.size());
        std::string_view address = value.substr(0, size);
        value.remove_prefix(size);
        if (address.ends_with(','))
            address.remove_suffix(1);
        else // a size follows
            value.remove_prefix(std::min(value.find(','), value.size()));
        addresses.push_back(address);
    }
}

std::string_view RefreshAddress(std::string_view content)
{
    const std::size_t at = FindNoCase(content, "url");
    std::string_view address = at == npos ? std::string_view() : Trim(content.substr(at + 3));
    if (!address.starts_with('='))
        return {};
    address = Trim(address.substr(1));
    if (!address.empty() && (address[0] == '"' || address[0] == '\''))
        return Before(address.substr(1), address[0]);
    return address;
}

std::optional<int> PixelsOf(std::string_view side)
{
    side = Trim(side);
    if (side.size() > 2 && EqualsNoCase(side.substr(side.size() - 2), "px"))
        side.remove_suffix(2);
    if (side.empty() || side.size() > 6 || side.find_first_not_of("0123456789") != npos)
        return std::nullopt;
    return NumericHead(side);
}

bool HasWord(std::string_view words, std::string_view word)
{
    return Contains(" " + LowerCase(words) + " ", " " + std::string(word) + " ");
}

} // namespace kiv
