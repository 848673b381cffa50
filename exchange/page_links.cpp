#include "exchange/page_links.h"

#include "text/text.h"

#include <optional>

namespace kiv {

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

/// A tag, from behind its "<" to its ">".
struct Tag {
    std::string_view text;

    bool Is(std::string_view name) const
    {
        return StartsWithNoCase(text, name) &&
               (text.size() == name.size() || IsBlank(text[name.size()]));
    }
    std::string_view Attribute(std::string_view name) const;
};

/// The value of an attribute that begins at `rest`, behind its "=".
std::string_view ValueAt(std::string_view rest)
{
    while (!rest.empty() && IsBlank(rest.front()))
        rest.remove_prefix(1);
    if (!rest.empty() && (rest.front() == '"' || rest.front() == '\''))
        return Before(rest.substr(1), rest.front());
    std::size_t end = 0;
    while (end < rest.size() && !IsBlank(rest[end]))
        ++end;
    return rest.substr(0, end);
}

std::string_view Tag::Attribute(std::string_view name) const
{
    for (std::size_t at = FindNoCase(text, name); at != npos; at = FindNoCase(text, name, at + 1)) {
        std::size_t behind = at + name.size();
        while (behind < text.size() && IsBlank(text[behind]))
            ++behind;
        if (at > 0 && IsBlank(text[at - 1]) && behind < text.size() && text[behind] == '=')
            return ValueAt(text.substr(behind + 1));
    }
    return {};
}

/// On one line, each run of blanks as one, none at the ends.
std::string OneLine(std::string_view text)
{
    std::string line;
    for (const char c : text)
        if (!IsBlank(c))
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    return std::string(Trim(line));
}

void TakeNeighbour(PageHints& hints, const Tag& tag, std::string_view address)
{
    const std::string_view relation = tag.Attribute("rel");
    const std::string_view key = tag.Attribute("accesskey");
    const bool is_next = EqualsNoCase(relation, "next") || EqualsNoCase(key, "n");
    const bool is_previous = EqualsNoCase(relation, "prev") || EqualsNoCase(relation, "previous") ||
                             EqualsNoCase(key, "p");
    if (is_next && hints.next.empty())
        hints.next = address;
    if (is_previous && hints.previous.empty())
        hints.previous = address;
}

} // namespace

PageHints HintsOf(std::string_view bytes)
{
    PageHints hints;
    bool has_title = false;
    for (std::size_t at = bytes.find('<'); at != npos; at = bytes.find('<', at + 1)) {
        const std::string_view rest = bytes.substr(at + 1);
        if (rest.starts_with("!--")) {
            const std::size_t end = rest.find("-->");
            if (end == npos)
                break;
            at += end;
            continue;
        }
        // Nothing else is of interest. A tag ends at the next "<", too: hostile pages have no ">".
        if (!StartsWithNoCase(rest, "a") && !StartsWithNoCase(rest, "link") &&
            !StartsWithNoCase(rest, "title"))
            continue;
        const Tag tag{rest.substr(0, rest.find_first_of("<>"))};
        if (tag.Is("title") && !has_title) {
            const std::string_view behind = FromChar(rest, tag.text.size() + 2);
            if (const std::size_t end = behind.find('<'); end != npos)
                hints.title = OneLine(behind.substr(0, end));
            has_title = true;
        } else if (tag.Is("a") || tag.Is("link")) {
            const std::string_view address = tag.Attribute("href");
            TakeNeighbour(hints, tag, address);
            if (tag.Is("a") && !address.empty())
                hints.links.emplace_back(address);
        }
    }
    return hints;
}

namespace {

std::optional<int> HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char upper = AsciiUpper(c);
    if (upper >= 'A' && upper <= 'F')
        return upper - 'A' + 10;
    return std::nullopt;
}

/// "%20" as the byte it stands for.
std::string Decoded(std::string_view address)
{
    std::string text;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const auto high = i + 2 < address.size() ? HexDigit(address[i + 1]) : std::nullopt;
        const auto low = i + 2 < address.size() ? HexDigit(address[i + 2]) : std::nullopt;
        if (address[i] != '%' || !high || !low) {
            text += address[i];
            continue;
        }
        text += static_cast<char>(*high * 16 + *low);
        i += 2;
    }
    return text;
}

} // namespace

std::string LinkTarget(std::string_view address, std::string_view page)
{
    address = Before(Before(address, '#'), '?');
    if (address.empty() || address.front() == '/' || Contains(address, ":"))
        return {};
    const std::size_t slash = page.rfind('/');
    std::vector<std::string_view> parts;
    if (slash != npos)
        parts = Split(page.substr(0, slash), '/');
    const std::string decoded = Decoded(address);
    for (const std::string_view part : Split(decoded, '/')) {
        if (part == "..") {
            if (parts.empty())
                return {};
            parts.pop_back();
        } else if (part != "." && !part.empty()) {
            parts.push_back(part);
        }
    }
    std::string target;
    for (const std::string_view part : parts)
        target.append(target.empty() ? "" : "/").append(part);
    return target;
}

} // namespace kiv
