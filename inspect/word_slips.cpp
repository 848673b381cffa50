#include "inspect/word_slips.h"

#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kLongWord = 7; // letters, from which two slips are likely

/// How many slips make `known` of `word`; 0: they are equal, or it is another word.
std::size_t SlipsTo(std::string_view word, std::string_view known, std::size_t shortest)
{
    const std::size_t shorter = std::min(word.size(), known.size());
    const std::size_t longer = std::max(word.size(), known.size());
    const std::size_t most = shorter < kLongWord ? 1 : 2;
    if (shorter < shortest || longer - shorter > most)
        return 0;
    const std::size_t slips = EditDistance(UpperCase(word), UpperCase(known), most);
    return slips > most ? 0 : slips;
}

} // namespace

bool IsSlipOf(std::string_view word, std::string_view known, std::size_t shortest)
{
    return SlipsTo(word, known, shortest) != 0;
}

std::string_view SlipOf(std::string_view word, std::span<const std::string_view> words,
                        std::size_t shortest)
{
    std::string_view nearest;
    std::size_t least = npos;
    for (const std::string_view known : words) {
        const std::size_t slips = SlipsTo(word, known, shortest);
        if (slips != 0 && slips < least) {
            least = slips;
            nearest = known;
        }
    }
    return nearest;
}

bool IsUpperCase(std::string_view word)
{
    return std::ranges::none_of(word, [](char c) { return c != AsciiUpper(c); });
}

bool IsWordCharacter(char c)
{
    return (AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

std::string_view HeadWord(std::string_view text)
{
    const auto end = std::ranges::find_if_not(text, IsWordCharacter);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

std::string Letters(std::string_view text)
{
    std::string letters;
    for (const char c : UpperCase(text))
        if (c >= 'A' && c <= 'Z')
            letters += c;
    return letters;
}

} // namespace kiv
