// XML as text. The library that writes it stands behind this header.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

/// An element; its names are XML names, its texts UTF-8 of any characters.
struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes = {};
    std::string text = {}; // stands before the elements within
    std::vector<XmlElement> within = {};
};

/// The document, UTF-8, its lines ended by LF; `remark` stands in a comment before the root and has
/// no "--". What XML cannot hold is left out: control characters, and bytes that are no UTF-8.
/// Throws RunError of kind `file` in a program that was built without the library.
std::string XmlText(const XmlElement& root, std::string_view remark);

} // namespace kiv
