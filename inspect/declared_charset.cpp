#include "inspect/declared_charset.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f";

/// Takes the next tag or comment off `rest` and returns what stands between its brackets; a ">" in
/// quotes does not end a tag. Comments come out empty. False at the end.
bool TakeTag(std::string_view& rest, std::string_view& tag)
{
    rest.remove_prefix(std::min(rest.find('<'), rest.size()));
    if (rest.starts_with("<!--")) {
        rest.remove_prefix(std::min(rest.find("-->"), rest.size()));
        tag = {};
        return true;
    }
    if (rest.empty())
        return false;
    rest.remove_prefix(1);
    char quote = '\0';
    std::size_t end = 0;
    for (; end < rest.size() && (quote != '\0' || rest[end] != '>'); ++end) {
        const bool is_quote = rest[end] == '"' || rest[end] == '\'';
        if (is_quote && (quote == '\0' || quote == rest[end]))
            quote = quote == '\0' ? rest[end] : '\0';
    }
    tag = rest.substr(0, end);
    rest.remove_prefix(end);
    return true;
}

/// The value behind the "charset=" of a meta tag, be it an attribute or a part of its content.
std::string CharsetIn(std::string_view tag)
{
    std::size_t at = FindNoCase(tag, "charset");
    if (at == npos)
        return "";
    at = tag.find_first_not_of(kBlanks, at + std::string_view("charset").size());
    if (at == npos || tag[at] != '=')
        return "";
    at = tag.find_first_not_of(" \t\r\n\f\"'", at + 1);
    if (at == npos)
        return "";
    const std::size_t end = tag.find_first_of(" \t\r\n\f\"';/", at);
    return LowerCase(tag.substr(at, end == npos ? npos : end - at));
}

} // namespace

std::string DeclaredCharset(std::string_view page)
{
    std::string_view tag;
    while (TakeTag(page, tag)) {
        if (StartsWithNoCase(tag, "body") || StartsWithNoCase(tag, "/head"))
            return "";
        if (!StartsWithNoCase(tag, "meta"))
            continue;
        if (std::string charset = CharsetIn(tag); !charset.empty())
            return charset;
    }
    return "";
}

} // namespace kiv
