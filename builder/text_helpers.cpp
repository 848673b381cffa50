#include "builder/text_helpers.h"

#include "platform/run_error.h"
#include "text/loop_bound.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace kiv {

namespace {

/// Words that say nothing about a page. The order is the format's.
constexpr std::array<std::string_view, 10> kStopWords = {" and ", " of ", " the ", " in ", " or ",
                                                         " for ", " a ",  " an ",  " is ", " are "};

std::string Replaced(std::string_view text, std::string_view word, std::string_view value)
{
    std::string result(text);
    ReplaceEach(result, word, value);
    return result;
}

constexpr std::size_t kLongestStopWord = 3; // without the blanks

/// The characters of a word that is no longer than the longest stop word, as one number. Two words
/// of letters have the same when they differ in case alone.
constexpr std::uint32_t KeyOf(std::string_view word)
{
    constexpr unsigned kCase = 0x20; // what a letter's two cases differ in
    std::uint32_t key = 0;
    for (const char c : word)
        key = key << 8U | (static_cast<unsigned char>(c) | kCase);
    return key;
}

static_assert(std::ranges::max(kStopWords, {}, &std::string_view::size).size() ==
              kLongestStopWord + 2);

constexpr auto kStopKeys = [] {
    std::array<std::uint32_t, kStopWords.size()> keys{};
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i] = KeyOf(kStopWords[i].substr(1, kStopWords[i].size() - 2));
    return keys;
}();

/// Which stop words a text holds: few titles have more than one. None comes to stand between blanks
/// by another that goes.
std::array<bool, kStopWords.size()> StopWordsIn(std::string_view text)
{
    std::array<bool, kStopWords.size()> present{};
    std::size_t blank = text.find(' ');
    while (blank != npos) {
        const std::size_t begin = blank + 1;
        blank = text.find(' ', begin);
        if (blank == npos || blank - begin > kLongestStopWord)
            continue;
        const std::uint32_t key = KeyOf(text.substr(begin, blank - begin));
        for (std::size_t i = 0; i < kStopKeys.size(); ++i)
            present[i] = present[i] || key == kStopKeys[i];
    }
    return present;
}

/// Leaves the characters out that are none of a keyword, and blanks in the place of others.
void CleanKeywords(std::string& text)
{
    std::size_t kept = 0;
    for (const char c : text)
        if (c != '&' && c != '"')
            text[kept++] = c == ',' || c == ':' || c == ';' ? ' ' : c;
    text.resize(kept);
}

/// A "," for each blank, or for two that follow each other: three leave two, and so an empty
/// keyword.
void PutCommas(std::string& text)
{
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool is_blank = text[i] == ' ';
        text[kept++] = is_blank ? ',' : text[i];
        if (is_blank && i + 1 < text.size() && text[i + 1] == ' ')
            ++i;
    }
    text.resize(kept);
}

/// Takes out everything between the first "<" and the first ">" while there are both. Each is
/// looked for on its own, so a ">" that comes first takes the text up to the "<" with it. The
/// format wants it so.
std::string WithoutTags(std::string_view text)
{
    std::string kept;
    while (true) {
        const std::size_t open = text.find('<');
        const std::size_t close = text.find('>');
        if (open == npos || close == npos)
            break;
        kept += text.substr(0, std::min(open, close));
        text.remove_prefix(std::max(open, close) + 1);
    }
    kept += text;
    return kept;
}

} // namespace

std::string FileStem(std::string& file)
{
    // Where there is none: npos + 1 is 0. Two looks for one character take less than one for two.
    file.erase(0, std::max(file.rfind('/') + 1, file.rfind('\\') + 1));
    return std::string(Before(file, '.'));
}

std::string StripTitle(std::string_view title)
{
    std::string text = WithoutTags(title);
    ReplaceEach(text, "&", "&amp;");
    ReplaceEach(text, "\"", "&quot;");
    return text;
}

std::string TitleKeywords(std::string_view title)
{
    std::string text = WithoutTags(title);
    CleanKeywords(text);
    // One pass a word: of two stop words that share a blank the second stays, as the format says.
    const auto present = StopWordsIn(text);
    for (std::size_t i = 0; i < kStopWords.size(); ++i)
        if (present[i])
            ReplaceEachNoCase(text, kStopWords[i], " ");
    PutCommas(text);
    return text;
}

std::string IndexRelativeLink(std::string_view page)
{
    return page.starts_with("index") ? std::string() : "/" + std::string(page);
}

std::string_view DropParentPrefix(std::string_view path)
{
    return path.starts_with("..") ? FromChar(path, 4) : path;
}

std::string DecodeLineBreaks(std::string_view text)
{
    std::string result = Replaced(text, "<>", "\r\n");
    ReplaceEach(result, "~~", "<>");
    return result;
}

void ExpandTitleVariables(std::string& text, const VariableSlots& at_slots)
{
    if (!Contains(text, "@@"))
        return;
    LineBound bound(text.size());
    for (int digit = 1; digit <= 9; ++digit) {
        const std::string mark = "@@" + Decimal(digit);
        if (!ReplaceWhileLeft(text, mark, at_slots[digit], bound))
            throw RunError(ErrorKind::overflow,
                           "the title does not come to an end: " + mark +
                               " brings itself back, or too much text",
                           {},
                           "Look at the definition of " + mark +
                               " and at those that it uses: none may lead back to it.");
    }
}

std::string SpaceToPct20(std::string_view text)
{
    return Replaced(text, " ", "%20");
}

} // namespace kiv
