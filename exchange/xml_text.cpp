#include "exchange/xml_text.h"

#include "text/windows1252.h"

#include <pugixml.hpp>

#include <sstream>

namespace kiv {

namespace {

/// Whether XML 1.0 has the character.
bool IsXmlCharacter(char32_t point)
{
    if (point < 0x20)
        return point == '\t' || point == '\n' || point == '\r';
    return point != 0xFFFE && point != 0xFFFF;
}

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

/// Elements are no deeper than those who call nest them.
void AddElement(pugi::xml_node parent, const XmlElement& element)
{
    pugi::xml_node node = parent.append_child(element.name.c_str());
    for (const auto& [name, value] : element.attributes)
        node.append_attribute(name.c_str()).set_value(XmlCharacters(value).c_str());
    if (!element.text.empty())
        node.text().set(XmlCharacters(element.text).c_str());
    for (const XmlElement& inner : element.within)
        AddElement(node, inner);
}

} // namespace

std::string XmlText(const XmlElement& root, std::string_view remark)
{
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version").set_value("1.0");
    declaration.append_attribute("encoding").set_value("utf-8");
    document.append_child(pugi::node_comment).set_value((" " + std::string(remark) + " ").c_str());
    AddElement(document, root);
    std::ostringstream text;
    document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
    return text.str();
}

} // namespace kiv
