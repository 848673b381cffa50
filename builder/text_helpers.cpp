#include "builder/text_helpers.h"

#include "platform/run_error.h"
#include "text/loop_bound.h"
#include "text/text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kiv {

namespace {

/// Words that say nothing about a page. The order is the format's.
constexpr std::string_view kStopWords[] = {" and ", " of ", " the ", " in ", " or ",
                                           " for ", " a ",  " an ",  " is ", " are "};

std::string Replaced(std::string_view text, std::string_view word, std::string_view value)
{
    std::string result(text);
    ReplaceEach(result, word, value);
    return result;
}

/// The characters that stand behind blanks, in upper case: what words begin with.
std::string WordStarts(std::string_view text)
{
    std::string starts;
    for (std::size_t i = 1; i < text.size(); ++i)
        if (text[i - 1] == ' ')
            starts += AsciiUpper(text[i]);
    return starts;
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
    std::erase_if(text, [](char c) { return c == '&' || c == '"'; });
    std::ranges::replace_if(
        text, [](char c) { return c == ',' || c == ':' || c == ';'; }, ' ');
    // One pass a word: of two stop words that share a blank the second stays, as the format says.
    // A word that goes lets none begin elsewhere.
    const std::string starts = WordStarts(text);
    for (const std::string_view word : kStopWords)
        if (starts.find(AsciiUpper(word[1])) != npos)
            ReplaceEachNoCase(text, word, " ");
    // One pass as well: three blanks leave two, and so an empty keyword.
    ReplaceEach(text, "  ", " ");
    std::ranges::replace(text, ' ', ',');
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
