#include "inspect/declared_charset.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kMetaName = "meta";

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

struct Attribute {
    std::string_view name;
    std::string_view value; // without its quotes
};

/// Takes the next attribute off the rest of a tag; the name is empty at the end.
Attribute TakeAttribute(std::string_view& rest)
{
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n\f/"), rest.size()));
    Attribute attribute;
    attribute.name = rest.substr(0, rest.find_first_of(" \t\r\n\f/="));
    rest.remove_prefix(attribute.name.size());
    const std::size_t equals = rest.find_first_not_of(kHtmlBlanks);
    if (equals == npos || rest[equals] != '=')
        return attribute;
    rest.remove_prefix(equals + 1);
    rest.remove_prefix(std::min(rest.find_first_not_of(kHtmlBlanks), rest.size()));
    const bool is_quoted = rest.starts_with('"') || rest.starts_with('\'');
    const char quote = is_quoted ? rest.front() : ' ';
    if (is_quoted)
        rest.remove_prefix(1);
    attribute.value =
        rest.substr(0, is_quoted ? rest.find(quote) : rest.find_first_of(kHtmlBlanks));
    rest.remove_prefix(std::min(attribute.value.size() + (is_quoted ? 1 : 0), rest.size()));
    return attribute;
}

/// What stands behind "charset=" in "text/html; charset=utf-8".
std::string_view CharsetOfContent(std::string_view content)
{
    constexpr std::string_view kWord = "charset";
    const std::size_t at = FindNoCase(content, kWord);
    if (at == npos)
        return {};
    content.remove_prefix(at + kWord.size());
    content.remove_prefix(std::min(content.find_first_not_of(kHtmlBlanks), content.size()));
    if (!content.starts_with('='))
        return {};
    content.remove_prefix(1);
    content.remove_prefix(std::min(content.find_first_not_of(" \t\r\n\f\"'"), content.size()));
    return content.substr(0, content.find_first_of(" \t\r\n\f\"';"));
}

/// What a meta tag declares, "" when it is about something else.
std::string CharsetIn(std::string_view meta)
{
    meta.remove_prefix(kMetaName.size());
    std::string_view content;
    bool is_content_type = false;
    for (Attribute one = TakeAttribute(meta); !one.name.empty(); one = TakeAttribute(meta)) {
        if (EqualsNoCase(one.name, "charset"))
            return LowerCase(Trim(one.value));
        if (EqualsNoCase(one.name, "http-equiv"))
            is_content_type = EqualsNoCase(Trim(one.value), "content-type");
        if (EqualsNoCase(one.name, "content"))
            content = one.value;
    }
    return is_content_type ? LowerCase(CharsetOfContent(content)) : "";
}

} // namespace

std::string DeclaredCharset(std::string_view page)
{
    std::string_view tag;
    while (TakeTag(page, tag)) {
        if (StartsWithNoCase(tag, "body") || StartsWithNoCase(tag, "/head"))
            return "";
        if (!StartsWithNoCase(tag, kMetaName))
            continue;
        if (std::string charset = CharsetIn(tag); !charset.empty())
            return charset;
    }
    return "";
}

} // namespace kiv
