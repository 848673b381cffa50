#include "exchange/page_links.h"

#include "text/text.h"

#include <algorithm>
#include <array>
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

/// The tag or entity that begins a text, with its end; a sign alone where it is neither.
std::string_view MarkupAt(std::string_view text)
{
    constexpr std::size_t kLongestEntity = 10;
    const std::size_t end = text.find(text.front() == '<' ? '>' : ';');
    const bool is_markup = end != npos && (text.front() == '<' || end <= kLongestEntity);
    return text.substr(0, is_markup ? end + 1 : 1);
}

/// The letters of what a link shows, as capitals, one blank between words: its text and the "alt"
/// of its pictures, up to a colon. `rest` is what stands behind its tag.
std::string WordsOf(std::string_view rest)
{
    constexpr std::size_t kLongest = 300; // what is longer is no button
    rest = rest.substr(0, kLongest);
    rest = rest.substr(0, FindNoCase(rest, "</a"));
    std::string shown;
    while (!rest.empty()) {
        if (rest.front() != '<' && rest.front() != '&') {
            shown += rest.front();
            rest.remove_prefix(1);
            continue;
        }
        const std::string_view markup = MarkupAt(rest);
        shown += ' ';
        if (const Tag tag{markup.substr(1)}; tag.Is("img"))
            shown.append(tag.Attribute("alt")).append(" ");
        rest.remove_prefix(markup.size());
    }
    std::string words(Before(shown, ':'));
    for (char& c : words)
        c = AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z' ? AsciiUpper(c) : ' ';
    return OneLine(words);
}

/// Which neighbour a link's words call: 1 the next page, -1 the previous one, 0 none. "Back" and
/// "Forward" may mean other pages as well.
struct Called {
    int neighbour = 0;
    bool is_certain = true;
};

Called CalledBy(std::string_view words)
{
    constexpr std::array<std::string_view, 6> kKinds = {"",        "PAGE", "CHAPTER",
                                                        "SECTION", "PART", "CLASS"};
    const std::string_view word = Before(words, ' ');
    const std::string_view kind = FromChar(words, word.size() + 2);
    if (std::ranges::find(kKinds, kind) == kKinds.end())
        return {};
    if (word == "NEXT" || word == "FORWARD")
        return {1, word == "NEXT"};
    if (word == "PREVIOUS" || word == "PREV" || word == "BACK")
        return {-1, word != "BACK"};
    return {};
}

/// Keeps the first link that is called so; one that certainly is goes before one that may be.
class CalledNeighbours {
  public:
    void Take(std::string_view behind_tag, std::string_view address)
    {
        const Called called = CalledBy(WordsOf(behind_tag));
        if (called.neighbour == 0 || address.empty())
            return;
        std::string& kept = called.neighbour > 0 ? next_[called.is_certain ? 0 : 1]
                                                 : previous_[called.is_certain ? 0 : 1];
        if (kept.empty())
            kept = address;
    }
    void Tell(PageHints& hints) const
    {
        hints.called_previous = previous_[previous_[0].empty() ? 1 : 0];
        hints.called_next = next_[next_[0].empty() ? 1 : 0];
    }

  private:
    std::array<std::string, 2> previous_; // certain, perhaps
    std::array<std::string, 2> next_;
};

} // namespace

PageHints HintsOf(std::string_view bytes)
{
    PageHints hints;
    CalledNeighbours called;
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
            if (tag.Is("a") && !address.empty()) {
                hints.links.emplace_back(address);
                called.Take(FromChar(rest, tag.text.size() + 2), address);
            }
        }
    }
    called.Tell(hints);
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
