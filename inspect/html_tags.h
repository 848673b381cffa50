// Where the tags of a page are, as far as that can be told without a parser.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kiv {

inline bool IsTagLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// What stands behind a comment that begins here.
std::string_view BehindComment(std::string_view rest);

/// What stands behind a tag, of which `rest` is what follows its name.
std::string_view BehindTag(std::string_view rest);

/// A tag of a page. Positions are 0-based.
struct HtmlTag {
    std::size_t at = 0; // its "<"
    std::size_t name_end = 0;
    std::size_t end = 0; // behind its ">"
    std::string name;    // in capitals
    bool is_end = false;

    bool operator==(const HtmlTag&) const = default;
};

/// Calls `take` for each tag, in order. What stands in comments, server code, script, style sheets
/// and elements that hold text alone, such as TITLE, is no tag.
void ForEachTag(std::string_view html, const std::function<void(const HtmlTag&)>& take);

} // namespace kiv
