// What the files of a site are, by their names.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// How a file is shown.
enum class ShownAs {
    page,   // HTML
    script, // a page that a server would run: its text
    text,   // as it is; its character set is told
    other,  // as it is
};

struct MediaType {
    std::string_view extension; // in small letters, without dot
    std::string_view type;
    ShownAs shown = ShownAs::other;
};

/// The type by the extension, whatever its case; bytes that the browser keeps when it is not known.
const MediaType& MediaTypeOf(std::string_view name);

/// The type of a text file as a field says it: UTF-8 when the bytes are, else Windows-1252.
std::string TextType(const MediaType& type, std::string_view bytes);

} // namespace kiv
