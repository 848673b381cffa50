#include "text/text.h"

#include "text/loop_bound.h"
#include "text/text_cursor.h"

#include <algorithm>

namespace kiv {

namespace {

char AsciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether a text has `word`, which is ASCII, at a place, in any case. Most words are written as
/// they are looked for.
bool HoldsAt(std::string_view text, std::size_t at, std::string_view word)
{
    if (text.size() - at < word.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (const char c = text[at + i]; c != word[i] && AsciiUpper(c) != AsciiUpper(word[i]))
            return false;
    return true;
}

/// 0-based position of the first character at or after `from` that is `a` or `b`.
std::size_t FindEither(std::string_view text, char a, char b, std::size_t from)
{
    if (a == b)
        return text.find(a, from);
    while (from < text.size() && text[from] != a && text[from] != b)
        ++from;
    return from < text.size() ? from : npos;
}

template <typename Find>
bool ReplaceFound(std::string& text, std::size_t word_size, std::string_view value, Find find)
{
    std::size_t at = find(0);
    if (at == npos)
        return false;
    if (find(at + word_size) == npos) {
        text.replace(at, word_size, value);
        return true;
    }
    std::string merged;
    merged.reserve(text.size() + value.size());
    std::size_t done = 0;
    for (; at != npos; at = find(done)) {
        merged.append(text, done, at - done).append(value);
        done = at + word_size;
    }
    merged.append(text, done);
    text = std::move(merged);
    return true;
}

template <typename Separator>
std::vector<std::string_view> SplitAt(std::string_view text, Separator separator, std::size_t size)
{
    std::vector<std::string_view> pieces;
    if (text.empty())
        return pieces;
    pieces.reserve(4); // few have more
    for (std::size_t at = text.find(separator); at != npos; at = text.find(separator)) {
        pieces.push_back(text.substr(0, at));
        text.remove_prefix(at + size);
    }
    pieces.push_back(text);
    return pieces;
}

/// Blanks stand everywhere: a word that begins with one is looked for by its second character.
std::size_t FindWord(std::string_view text, std::string_view word, std::size_t from)
{
    if (word.size() < 2 || word[0] != ' ')
        return text.find(word, from);
    for (std::size_t at = text.find(word[1], from + 1); at != npos; at = text.find(word[1], at + 1))
        if (text.substr(at - 1).starts_with(word))
            return at - 1;
    return npos;
}

} // namespace

std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::size_t FindNoCase(std::string_view text, std::string_view word, std::size_t from)
{
    if (word.empty() || from >= text.size())
        return npos;
    const char upper = AsciiUpper(word[0]);
    const char lower = AsciiLower(word[0]);
    for (std::size_t at = FindEither(text, upper, lower, from); at != npos;
         at = FindEither(text, upper, lower, at + 1))
        if (HoldsAt(text, at, word))
            return at;
    return npos;
}

bool ContainsNoCase(std::string_view text, std::string_view word)
{
    return FindNoCase(text, word) != npos;
}

std::size_t CountNoCase(std::string_view text, std::string_view word)
{
    std::size_t count = 0;
    for (std::size_t at = FindNoCase(text, word); at != npos;
         at = FindNoCase(text, word, at + word.size()))
        ++count;
    return count;
}

bool ReplaceEach(std::string& text, std::string_view word, std::string_view value)
{
    return ReplaceFound(text, word.size(), value,
                        [&](std::size_t from) { return FindWord(text, word, from); });
}

bool ReplaceEachNoCase(std::string& text, std::string_view word, std::string_view value)
{
    return ReplaceFound(text, word.size(), value,
                        [&](std::size_t from) { return FindNoCase(text, word, from); });
}

std::string QuoteEscape(std::string_view text)
{
    std::string escaped(text);
    ReplaceEach(escaped, "\"", "&quot;");
    return escaped;
}

bool ReplaceWhileLeft(std::string& text, std::string_view word, std::string_view value,
                      LineBound& bound)
{
    std::size_t at = FindNoCase(text, word);
    if (at == npos)
        return true;
    bound.AddMarks(CountNoCase(text, word));
    bound.AddSource(value.size());
    std::string before;
    TextCursor cursor(text, before);
    while (at != npos) {
        cursor.MoveTo(cursor.At() + at);
        if (cursor.Rest().substr(0, word.size()) == value)
            break;
        cursor.Put(word.size(), value);
        cursor.MoveTo(SearchStart(cursor.At(), word));
        at = FindNoCase(cursor.Rest(), word);
        if (!bound.Allows(cursor.Size(), at != npos) || !bound.Spend(2 * cursor.TakeMoved()))
            return false;
    }
    cursor.Close();
    return true;
}

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    return SplitAt(text, separator, 1);
}

std::vector<std::string_view> Split(std::string_view text, std::string_view separator)
{
    return SplitAt(text, separator, separator.size());
}

std::string_view TakeLine(std::string_view& rest)
{
    const std::size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end == npos ? rest.size() : end + 1);
    if (end != npos && line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::string_view Before(std::string_view text, char separator)
{
    return text.substr(0, text.find(separator));
}

int NumericHead(std::string_view text)
{
    constexpr int kLimit = 1'000'000'000;
    long long value = 0;
    bool negative = false;
    bool started = false;
    for (const char c : text) {
        if (c == ' ')
            continue;
        if (!started && (c == '-' || c == '+')) {
            negative = c == '-';
            started = true;
            continue;
        }
        if (c < '0' || c > '9')
            break;
        started = true;
        value = std::min<long long>(value * 10 + (c - '0'), kLimit);
    }
    return static_cast<int>(negative ? -value : value);
}

std::string Decimal(long long number)
{
    return std::to_string(number);
}

} // namespace kiv
