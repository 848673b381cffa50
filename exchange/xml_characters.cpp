#include "exchange/xml_characters.h"

#include "text/windows1252.h"

namespace kiv {

namespace {

/// Whether XML 1.0 has the character.
bool IsXmlCharacter(char32_t point)
{
    if (point < 0x20)
        return point == '\t' || point == '\n' || point == '\r';
    return point != 0xFFFE && point != 0xFFFF;
}

} // namespace

std::string XmlCharacters(std::string_view utf8)
{
    std::string text;
    while (!utf8.empty()) {
        const Utf8Character character = FirstUtf8(utf8);
        if (character.size > 0 && IsXmlCharacter(character.point))
            text.append(utf8.substr(0, character.size));
        utf8.remove_prefix(character.size > 0 ? character.size : 1);
    }
    return text;
}

} // namespace kiv
