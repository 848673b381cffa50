#include "inspect/html_tags.h"

#include "inspect/server_code.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>

namespace kiv {

namespace {

/// Elements in which everything up to their end tag is text.
constexpr std::string_view kTextOnly[] = {
    "IFRAME", "NOEMBED", "NOFRAMES", "SCRIPT", "STYLE", "TEXTAREA", "TITLE", "XMP",
};
constexpr std::string_view kTextToTheEnd = "PLAINTEXT";

bool EndsName(char c)
{
    return c == '>' || c == '/' || c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

/// Where the end tag of an element of text stands, from `at` on; the page's end when it has none.
std::size_t EndOfText(std::string_view html, std::size_t at, const std::string& name)
{
    const std::string end_tag = "</" + name;
    for (at = FindNoCase(html, end_tag, at); at != npos; at = FindNoCase(html, end_tag, at + 1)) {
        const std::size_t behind = at + end_tag.size();
        if (behind >= html.size() || EndsName(html[behind]))
            return at;
    }
    return html.size();
}

/// What stands behind something that begins with "<" and is no tag.
std::string_view BehindNoTag(std::string_view rest)
{
    if (rest.starts_with("<!--"))
        return BehindComment(rest);
    const bool is_declaration =
        rest.starts_with("<!") || rest.starts_with("<?") || rest.starts_with("</");
    return rest.substr(is_declaration ? std::min(rest.find('>'), rest.size() - 1) + 1 : 1);
}

/// The tag at `at`, if one begins there.
std::optional<HtmlTag> TagAt(std::string_view html, std::size_t at)
{
    HtmlTag tag;
    tag.at = at;
    tag.is_end = html.substr(at).starts_with("</");
    const std::size_t begin = at + (tag.is_end ? 2 : 1);
    if (begin >= html.size() || !IsTagLetter(html[begin]))
        return std::nullopt;
    tag.name_end = std::min(html.find_first_of(" \t\r\n\f/>", begin), html.size());
    tag.name = UpperCase(html.substr(begin, tag.name_end - begin));
    tag.end = html.size() - BehindTag(html.substr(tag.name_end)).size();
    return tag;
}

/// Where to look on behind a tag.
std::size_t Behind(std::string_view html, const HtmlTag& tag)
{
    if (tag.is_end)
        return tag.end;
    if (tag.name == kTextToTheEnd)
        return html.size();
    const bool is_text = std::ranges::find(kTextOnly, tag.name) != std::end(kTextOnly);
    return is_text ? EndOfText(html, tag.end, tag.name) : tag.end;
}

} // namespace

std::string_view BehindComment(std::string_view rest)
{
    if (rest.starts_with("<!-->"))
        return rest.substr(5);
    if (rest.starts_with("<!--->"))
        return rest.substr(6);
    for (std::size_t at = rest.find("--", 4); at != npos; at = rest.find("--", at + 1)) {
        const std::string_view end = rest.substr(at + 2, 2);
        if (end.starts_with(">") || end == "!>")
            return rest.substr(rest.find('>', at) + 1);
    }
    return {};
}

std::string_view BehindTag(std::string_view rest)
{
    std::size_t at = 0;
    while (at < rest.size() && rest[at] != '>') {
        const bool begins_value = rest[at++] == '=';
        if (!begins_value)
            continue;
        at = std::min(rest.find_first_not_of(" \t\r\n\f", at), rest.size());
        if (at < rest.size() && (rest[at] == '"' || rest[at] == '\''))
            at = std::min(rest.find(rest[at], at + 1), rest.size() - 1) + 1;
    }
    return rest.substr(std::min(at + 1, rest.size()));
}

void ForEachTag(std::string_view html, const std::function<void(const HtmlTag&)>& take)
{
    std::size_t at = 0;
    while ((at = html.find('<', at)) != npos) {
        const std::string_view rest = html.substr(at);
        if (const std::size_t code = ServerCodeSize(rest); code > 0) {
            at += code;
        } else if (const std::optional<HtmlTag> tag = TagAt(html, at)) {
            take(*tag);
            at = Behind(html, *tag);
        } else {
            at = html.size() - BehindNoTag(rest).size();
        }
    }
}

} // namespace kiv
