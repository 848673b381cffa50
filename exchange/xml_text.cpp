#include "exchange/xml_text.h"

#include "exchange/xml_characters.h"

#include <pugixml.hpp>

#include <sstream>

namespace kiv {

namespace {

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
