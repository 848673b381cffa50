// Text as the format sees it: characters are counted from 1, a cut past the end ends there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class LineBound;

inline constexpr std::size_t npos = std::string_view::npos;

/// What HTML and CSS take for white space.
inline constexpr std::string_view kHtmlBlanks = " \t\r\n\f";

/// The text from character `n` (1-based) on; empty when the text is shorter.
inline std::string_view FromChar(std::string_view text, std::size_t n)
{
    return n > text.size() ? std::string_view{} : text.substr(n - 1);
}

/// The first `k` characters, or the whole text when it is shorter.
inline std::string_view FirstChars(std::string_view text, std::size_t k)
{
    return text.substr(0, k);
}

/// The last `k` characters, or the whole text when it is shorter.
inline std::string_view LastChars(std::string_view text, std::size_t k)
{
    return k >= text.size() ? text : text.substr(text.size() - k);
}

/// Blanks (code 32) cut off at both ends; tabs, CR and LF stay.
std::string_view Trim(std::string_view text);

/// Upper case of an ASCII letter; any other character stays.
constexpr char AsciiUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Whether `text` begins with, equals or contains `word`, which is ASCII, in any case.
inline bool StartsWithNoCase(std::string_view text, std::string_view word)
{
    if (text.size() < word.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (AsciiUpper(text[i]) != AsciiUpper(word[i]))
            return false;
    return true;
}
inline bool EqualsNoCase(std::string_view text, std::string_view word)
{
    return text.size() == word.size() && StartsWithNoCase(text, word);
}
bool ContainsNoCase(std::string_view text, std::string_view word);

/// 0-based position of the first `word` (ASCII, in any case) at or after `from`, else `npos`.
std::size_t FindNoCase(std::string_view text, std::string_view word, std::size_t from = 0);

inline bool Contains(std::string_view text, std::string_view word)
{
    return text.find(word) != npos;
}

/// How often `word` stands in `text`, without overlaps. Case does not matter.
std::size_t CountNoCase(std::string_view text, std::string_view word);

/// Puts `value` for every `word` in one pass from left to right: `value` is not searched again.
/// Returns whether anything was replaced. The second form ignores the case of the ASCII `word`.
bool ReplaceEach(std::string& text, std::string_view word, std::string_view value);
bool ReplaceEachNoCase(std::string& text, std::string_view word, std::string_view value);

/// Every double quote as "&quot;".
std::string QuoteEscape(std::string_view text);

/// Puts `value` for the first `word` again and again while one is left, ignoring case. Ends quietly
/// when a pass changes nothing; returns false, with a text of no use, when it goes past the bound.
bool ReplaceWhileLeft(std::string& text, std::string_view word, std::string_view value,
                      LineBound& bound);

/// The place from which a search sees every `word` that a change at `changed` (0-based) may have
/// made: what was put in can join what stands before it.
inline std::size_t SearchStart(std::size_t changed, std::string_view word)
{
    return changed < word.size() ? 0 : changed - word.size() + 1;
}

/// The pieces between separators; an empty text has none.
std::vector<std::string_view> Split(std::string_view text, char separator);
/// The same with a separator of several characters, such as CR LF.
std::vector<std::string_view> Split(std::string_view text, std::string_view separator);

/// Takes the first line off `rest`, which must not be empty. LF ends a line and a CR right before
/// it goes with it; a last line needs no end.
std::string_view TakeLine(std::string_view& rest);

/// What stands before the first `separator`, or the whole text when there is none.
std::string_view Before(std::string_view text, char separator);

/// The numeric value of a text's head: blanks removed, an optional sign, decimal digits, the rest
/// ignored; 0 when there is no digit. Values beyond ±1,000,000,000 stay there.
int NumericHead(std::string_view text);

/// Decimal digits without leading zeros.
std::string Decimal(long long number);

} // namespace kiv
