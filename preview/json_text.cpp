#include "preview/json_text.h"

#include "text/windows1252.h"

namespace kiv {

namespace {

void AppendEscape(std::string& json, char32_t point)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    json.append("\\u");
    for (const int shift : {12, 8, 4, 0})
        json.push_back(kDigits[(point >> shift) & 0xF]);
}

} // namespace

std::string JsonText(std::string_view utf8)
{
    constexpr char32_t kUnknown = 0xFFFD;
    std::string json = "\"";
    while (!utf8.empty()) {
        const Utf8Character first = FirstUtf8(utf8);
        const std::size_t size = first.size == 0 ? 1 : first.size;
        const char32_t point = first.size == 0 ? kUnknown : first.point;
        const bool is_special = point < 0x20 || point == '"' || point == '\\' || point == '<' ||
                                point == 0x2028 || point == 0x2029 || point == kUnknown;
        if (is_special)
            AppendEscape(json, point);
        else
            json.append(utf8.substr(0, size));
        utf8.remove_prefix(size);
    }
    return json.append("\"");
}

} // namespace kiv
