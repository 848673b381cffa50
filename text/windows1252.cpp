#include "text/windows1252.h"

#include "text/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace kiv {

namespace {

constexpr unsigned char kFirstExtra = 0x80;

/// Code points of the codes 80 to 9F; every other code is its own code point.
constexpr std::array<char16_t, 32> kExtra = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

using CaseTable = std::array<char, 256>;

constexpr CaseTable Identity()
{
    CaseTable table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<char>(static_cast<unsigned char>(i));
    return table;
}

/// Calls `pair(upper, lower)` for every letter of the code page that has both cases.
template <typename Pair>
constexpr void ForEachCasePair(Pair pair)
{
    for (unsigned i = 'A'; i <= 'Z'; ++i)
        pair(i, i + 0x20);
    for (unsigned i = 0xC0; i <= 0xDE; ++i)
        if (i != 0xD7) // the multiplication sign stands among the letters
            pair(i, i + 0x20);
    pair(0x8A, 0x9A);
    pair(0x8C, 0x9C);
    pair(0x8E, 0x9E);
    pair(0x9F, 0xFF);
}

constexpr CaseTable kUpper = [] {
    CaseTable table = Identity();
    ForEachCasePair([&](unsigned upper, unsigned lower) {
        table[lower] = static_cast<char>(static_cast<unsigned char>(upper));
    });
    return table;
}();

constexpr CaseTable kLower = [] {
    CaseTable table = Identity();
    ForEachCasePair([&](unsigned upper, unsigned lower) {
        table[upper] = static_cast<char>(static_cast<unsigned char>(lower));
    });
    return table;
}();

std::string Map(std::string_view text, const CaseTable& table)
{
    std::string mapped(text);
    for (char& c : mapped)
        c = table[static_cast<unsigned char>(c)];
    return mapped;
}

/// Appends the character's code, or its decimal reference when the code page lacks it.
void AppendFromPoint(std::string& out, char32_t point)
{
    const bool own_code = point < kFirstExtra || (point >= 0xA0 && point <= 0xFF);
    if (own_code) {
        out.push_back(static_cast<char>(static_cast<unsigned char>(point)));
        return;
    }
    const auto* const extra = std::find(kExtra.begin(), kExtra.end(), point);
    if (extra != kExtra.end())
        out.push_back(
            static_cast<char>(static_cast<unsigned char>(kFirstExtra + (extra - kExtra.begin()))));
    else
        out.append("&#").append(std::to_string(static_cast<std::uint32_t>(point))).append(";");
}

/// Moves what a text begins with to the end of another as far as it is ASCII, which is the same in
/// both encodings.
void MoveAscii(std::string_view& from, std::string& to)
{
    const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80U; };
    const auto end = std::ranges::find_if_not(from, is_ascii);
    const auto size = static_cast<std::size_t>(end - from.begin());
    to.append(from.substr(0, size));
    from.remove_prefix(size);
}

} // namespace

char ToUpper(char c)
{
    return kUpper[static_cast<unsigned char>(c)];
}

char ToLower(char c)
{
    return kLower[static_cast<unsigned char>(c)];
}

std::string UpperCase(std::string_view text)
{
    return Map(text, kUpper);
}

std::string LowerCase(std::string_view text)
{
    return Map(text, kLower);
}

char32_t CodePoint(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return code >= kFirstExtra && code < 0xA0 ? kExtra[code - kFirstExtra] : code;
}

Utf8Character FirstUtf8(std::string_view utf8)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || utf8.size() < size)
        return {};
    char32_t point = lead & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0U) != 0x80)
            return {};
        point = (point << 6) | (byte(i) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    if (point < kSmallest[size] || surrogate || point > 0x10FFFF)
        return {};
    return {point, size};
}

void AppendUtf8(std::string& utf8, char32_t point)
{
    const auto unit = [&](char32_t bits) {
        utf8.push_back(static_cast<char>(static_cast<unsigned char>(bits)));
    };
    if (point < 0x80) {
        unit(point);
    } else if (point < 0x800) {
        unit(0xC0 | (point >> 6));
        unit(0x80 | (point & 0x3F));
    } else {
        unit(point < 0x10000 ? 0xE0 | (point >> 12) : 0xF0 | (point >> 18));
        if (point >= 0x10000)
            unit(0x80 | ((point >> 12) & 0x3F));
        unit(0x80 | ((point >> 6) & 0x3F));
        unit(0x80 | (point & 0x3F));
    }
}

std::string ToUtf8(std::string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (;;) {
        MoveAscii(text, utf8);
        if (text.empty())
            return utf8;
        AppendUtf8(utf8, CodePoint(text[0]));
        text.remove_prefix(1);
    }
}

std::string FromUtf8(std::string_view utf8)
{
    std::string text;
    text.reserve(utf8.size());
    for (;;) {
        MoveAscii(utf8, text);
        if (utf8.empty())
            return text;
        const Utf8Character next = FirstUtf8(utf8);
        if (next.size == 0)
            text.push_back(utf8[0]);
        else
            AppendFromPoint(text, next.point);
        utf8.remove_prefix(std::max<std::size_t>(next.size, 1));
    }
}

std::string ToUtf8Keeping(std::string_view text, std::string_view original)
{
    std::string utf8 = ToUtf8(text);
    for (std::string_view rest = original; !rest.empty();) {
        const std::string_view character =
            rest.substr(0, std::max<std::size_t>(FirstUtf8(rest).size, 1));
        rest.remove_prefix(character.size());
        const std::string reference = FromUtf8(character);
        // A reference that the original itself has cannot be told from one that was put in.
        if (reference.size() > 1 && !Contains(original, reference))
            ReplaceEach(utf8, reference, character);
    }
    return utf8;
}

} // namespace kiv
