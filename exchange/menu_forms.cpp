#include "exchange/menu_forms.h"

#include "exchange/protected_line.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kiv {

namespace {

constexpr int kMostForms = 9;
constexpr std::size_t kLongestHalf = 400;
constexpr std::size_t kLongestSaid = 200;

/// Part of a line.
struct LineSpan {
    std::size_t begin;
    std::size_t end;

    std::string_view Of(std::string_view line) const { return line.substr(begin, end - begin); }
};

/// A link to a page: <a href="b.html">Bread</a>.
struct MenuLink {
    LineSpan span;
    std::string_view says;
};

/// Whether a half or a field comes out of a build as it is.
bool IsPlain(std::string_view text, std::size_t longest)
{
    constexpr std::array<std::string_view, 4> kUnsaid = {"|", "]", "<>", "~~"};
    return !text.empty() && text.size() <= longest && ProtectedPart(text) == text &&
           std::ranges::none_of(kUnsaid,
                                [&](std::string_view word) { return Contains(text, word); });
}

bool HasPlaceholder(std::string_view text)
{
    for (std::size_t at = text.find('!'); at != npos; at = text.find('!', at + 1))
        if (at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9')
            return true;
    return false;
}

std::optional<MenuLink> LinkTo(std::string_view line, std::string_view page)
{
    const std::size_t address = FindNoCase(line, Joined({"href=\"", page, "\""}));
    const std::size_t begin = address == npos ? npos : line.rfind('<', address);
    const std::size_t text = address == npos ? npos : line.find('>', address);
    const std::size_t end = text == npos ? npos : FindNoCase(line, "</a>", text);
    if (begin == npos || end == npos || !StartsWithNoCase(line.substr(begin), "<a "))
        return std::nullopt;
    return MenuLink{{begin, end + 4}, line.substr(text + 1, end - text - 1)};
}

/// What of a line may be the entry: the link, the list item around it, the whole line when it has
/// no other link.
std::vector<LineSpan> ShapesOf(std::string_view line, const LineSpan& link)
{
    std::vector<LineSpan> shapes{link};
    const std::size_t item = line.substr(0, link.begin).rfind("<li");
    const std::size_t end = line.find("</li>", link.end);
    if (item != npos)
        shapes.push_back({item, end == npos ? link.end : end + 5});
    const std::size_t first = line.find_first_not_of(" \t");
    if (CountNoCase(line, "<a ") == 1)
        shapes.push_back({first, line.find_last_not_of(" \t") + 1});
    return shapes;
}

/// Where the next entry begins behind one.
std::size_t NextEntry(std::string_view rest)
{
    return std::min(FindNoCase(rest, "<a ", 1), FindNoCase(rest, "<li", 1));
}

/// The part of a page's own line that stands where another page has the entry that leads to it.
std::optional<LineSpan> SpanOfOwn(std::string_view own, std::string_view other,
                                  const LineSpan& entry, std::string_view says)
{
    if (!own.starts_with(other.substr(0, entry.begin)))
        return std::nullopt;
    const std::size_t said = own.find(says, entry.begin);
    if (said == npos)
        return std::nullopt;
    const std::size_t least = said + says.size();
    const std::string_view rest = other.substr(entry.end);
    const std::size_t next = rest.empty() ? npos : NextEntry(rest);
    if (next != npos) {
        const std::size_t end = own.find(rest.substr(0, next), least);
        return end == npos ? std::nullopt : std::optional(LineSpan{entry.begin, end});
    }
    if (own.size() < least + rest.size() || !own.ends_with(rest))
        return std::nullopt;
    return LineSpan{entry.begin, own.size() - rest.size()};
}

bool IsWordByte(char c)
{
    return (c >= '0' && c <= '9') || (AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z');
}

/// Whether `word` stands at a place of `text` and is no part of a longer one.
bool HasWordAt(std::string_view text, std::size_t at, std::string_view word)
{
    const std::size_t end = at + word.size();
    return text.substr(at).starts_with(word) &&
           (at == 0 || !IsWordByte(text[at - 1]) || !IsWordByte(word.front())) &&
           (end == text.size() || !IsWordByte(text[end]) || !IsWordByte(word.back()));
}

/// An entry's text with "!1" for the page and "!2" for what it says.
std::string Generalized(std::string_view text, std::string_view page, std::string_view says)
{
    std::string half;
    for (std::size_t at = 0; at < text.size();) {
        const bool is_page = HasWordAt(text, at, page);
        if (is_page || HasWordAt(text, at, says)) {
            half += is_page ? "!1" : "!2";
            at += is_page ? page.size() : says.size();
        } else {
            half += text[at++];
        }
    }
    return half;
}

} // namespace

MenuForms::MenuForms(const std::vector<std::string>& names) : names_(names.begin(), names.end())
{
    names_.erase("");
}

void MenuForms::Add(MenuForm form)
{
    const auto is_same = [&](const Form& known) {
        return known->yes == form.yes && known->no == form.no;
    };
    if (std::ranges::any_of(forms_, is_same))
        return;
    for (form.number = 1; form.number <= kMostForms; ++form.number)
        if (std::ranges::find(forms_, form.number,
                              [](const Form& known) { return known->number; }) == forms_.end()) {
            forms_.push_back(std::make_shared<const MenuForm>(std::move(form)));
            return;
        }
}

void MenuForms::Learn(std::string_view own, const std::string& page, std::string_view other)
{
    const bool is_short = own.size() <= kLongestSaidLine && other.size() <= kLongestSaidLine;
    const std::optional<MenuLink> link =
        is_short && own != other && names_.contains(page) ? LinkTo(other, page) : std::nullopt;
    if (!link || !IsPlain(link->says, kLongestSaid) || HasPlaceholder(link->says))
        return;
    for (const LineSpan& shape : ShapesOf(other, link->span)) {
        const std::optional<LineSpan> span = SpanOfOwn(own, other, shape, link->says);
        if (!span || span->Of(own) == shape.Of(other) || HasPlaceholder(span->Of(own)) ||
            HasPlaceholder(shape.Of(other)))
            continue;
        MenuForm form{0, Generalized(span->Of(own), page, link->says),
                      Generalized(shape.Of(other), page, link->says)};
        if (!IsPlain(form.yes, kLongestHalf) || !IsPlain(form.no, kLongestHalf))
            continue;
        said_[page].insert(std::string(link->says));
        return Add(std::move(form));
    }
}

/// An entry that leads to another page, at the beginning of `rest`.
std::optional<MenuForms::Found> MenuForms::FindOther(const Form& form, std::string_view rest) const
{
    Found found{{form, {}, {}}, 0};
    std::string_view half = form->no;
    std::size_t at = 0;
    while (!half.empty()) {
        const std::size_t literal = std::min(half.find('!'), half.size());
        if (!rest.substr(at).starts_with(half.substr(0, literal)))
            return std::nullopt;
        at += literal;
        half.remove_prefix(literal);
        if (!half.starts_with("!1") && !half.starts_with("!2")) {
            if (half.empty())
                break;
            if (rest.substr(at, 1) != "!")
                return std::nullopt;
            ++at;
            half.remove_prefix(1);
            continue;
        }
        std::string& field = half[1] == '1' ? found.entry.page : found.entry.says;
        half.remove_prefix(2);
        const std::string_view behind = half.substr(0, half.find('!'));
        const std::size_t end = rest.find(behind, at);
        if (behind.empty() || end == npos)
            return std::nullopt;
        field = rest.substr(at, end - at);
        at = end;
    }
    found.length = at;
    const bool is_good =
        names_.contains(found.entry.page) && IsPlain(found.entry.says, kLongestSaid) &&
        !HasPlaceholder(found.entry.says) && ShownEntry(found.entry, false) == rest.substr(0, at);
    return is_good ? std::optional(std::move(found)) : std::nullopt;
}

std::optional<MenuForms::Found> MenuForms::FindAt(std::string_view rest,
                                                  const std::string& page) const
{
    const auto said = said_.find(page);
    for (const Form& form : forms_) {
        if (form->no.front() == rest.front())
            if (std::optional<Found> found = FindOther(form, rest))
                return found;
        const char first = form->yes.front(); // "!" of "!2", if it is that
        if (said == said_.end() || (first != '!' && first != rest.front()))
            continue;
        for (const std::string& says : said->second) {
            const MenuEntry entry{form, page, says};
            const std::string shown = ShownEntry(entry, true);
            if (rest.starts_with(shown))
                return Found{entry, shown.size()};
        }
    }
    return std::nullopt;
}

std::optional<CodedLine> MenuForms::Told(std::string_view line, const std::string& page) const
{
    CodedLine told;
    if (forms_.empty() || line.size() > kLongestSaidLine)
        return std::nullopt;
    for (std::size_t at = 0; at < line.size();) {
        std::optional<Found> found = FindAt(line.substr(at), page);
        if (!found) {
            told.AddText(line[at++]);
            continue;
        }
        at += found->length;
        told.AddEntry(std::move(found->entry));
    }
    return told.HasCodes() && told.Source() ? std::optional(std::move(told)) : std::nullopt;
}

void MenuForms::ForgetUnused()
{
    std::erase_if(forms_, [](const Form& form) { return form.use_count() == 1; });
}

} // namespace kiv
