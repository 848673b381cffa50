#include "cli/shown_text.h"

#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

/// Whether a terminal may take a character for an order.
bool Steers(char32_t point)
{
    return (point < 0x20 && point != U'\n' && point != U'\t') || (point >= 0x7F && point <= 0x9F);
}

void AppendNumber(std::string& shown, unsigned char byte)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    shown.append("\\x");
    shown.push_back(kDigits[byte >> 4U]);
    shown.push_back(kDigits[byte & 0xFU]);
}

} // namespace

std::string ShownUtf8(std::string_view utf8)
{
    std::string shown;
    shown.reserve(utf8.size());
    while (!utf8.empty()) {
        const Utf8Character character = FirstUtf8(utf8);
        const std::size_t size = std::max<std::size_t>(character.size, 1);
        if (character.size == 0) // a terminal that knows no UTF-8 may obey this byte
            AppendNumber(shown, static_cast<unsigned char>(utf8[0]));
        else if (Steers(character.point) && !utf8.starts_with(kCrLf))
            AppendNumber(shown, static_cast<unsigned char>(character.point));
        else if (character.point != U'\r')
            shown.append(utf8.substr(0, size));
        utf8.remove_prefix(size);
    }
    return shown;
}

std::string OnlyUtf8(std::string_view native)
{
    std::string text;
    text.reserve(native.size());
    while (!native.empty()) {
        const std::size_t size = FirstUtf8(native).size;
        if (size == 0)
            AppendNumber(text, static_cast<unsigned char>(native[0]));
        else
            text.append(native.substr(0, size));
        native.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return text;
}

std::string ShownUtf8Line(std::string_view utf8)
{
    std::string line(utf8);
    ReplaceEach(line, "\r", "\\x0D");
    ReplaceEach(line, "\n", "\\x0A");
    return ShownUtf8(line);
}

std::string ShownLine(std::string_view text)
{
    return ShownUtf8Line(ToUtf8(text));
}

std::string ShownText(std::string_view text)
{
    return ShownUtf8(ToUtf8(text));
}

} // namespace kiv
