#include "builder/line_triggers.h"

#include "text/text.h"

#include <array>
#include <bit>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace kiv {

namespace {

/// The characters that a trigger can begin with.
constexpr std::string_view kFirst = "!$?@%<{}";

/// `rest` begins with "<".
Triggers TagTrigger(std::string_view rest)
{
    switch (rest.size() > 1 ? rest[1] : '\0') {
    case 's':
    case 'S':
        return StartsWithNoCase(rest, "<style>") ? kStyle : 0U;
    case 'o':
        return rest.starts_with("<option value=") ? kOption : 0U;
    case 'm':
    case 'M':
        return StartsWithNoCase(rest, "<META NAME=") ? kMeta : 0U;
    default:
        return 0;
    }
}

/// The trigger that a text begins with.
Triggers HeadTrigger(std::string_view rest)
{
    const char next = rest.size() > 1 ? rest[1] : '\0';
    switch (rest[0]) {
    case '@':
        return next == '@' ? kAt | kAtNumber : kAt;
    case '<':
        return TagTrigger(rest);
    case '!':
        return next == '!' ? kBang : 0U;
    case '$':
        return next == '$' ? kDollar : 0U;
    case '%':
        return next == '%' ? kPercent : 0U;
    case '?':
        return next == '?' || next == '!' ? kReference : 0U;
    case '{':
        return next == '{' || next == '}' ? kEscape : 0U;
    case '}':
        return next == '}' ? kEscape : 0U;
    default:
        return 0;
    }
}

Triggers StartTriggers(std::string_view line)
{
    Triggers triggers = 0;
    switch (line[0]) {
    case '=':
        if (line.size() >= 3 && line[2] == '=')
            triggers |= kPosition;
        break;
    case '@':
        triggers |= kDirective;
        break;
    case 'A':
    case 'a':
    case 'H':
    case 'h':
        if (StartsWithNoCase(line, "ASP:") || StartsWithNoCase(line, "HTM:"))
            triggers |= kPrefix;
        break;
    case 'D':
    case 'd':
        if (StartsWithNoCase(line, "DIR1:"))
            triggers |= kPrefix;
        break;
    case '[':
        if (line.starts_with("[["))
            triggers |= kWrapper;
        break;
    case ']':
        if (line == "]]")
            triggers |= kWrapEnd;
        break;
    case '<':
        if (line.size() > 3 && line[1] == '!' && line.starts_with("<!--"))
            triggers |= kMarker;
        break;
    case '!':
        if (line.starts_with("!++"))
            triggers |= kFileText;
        break;
    default:
        break;
    }
    return triggers;
}

constexpr std::size_t kBlock = 16;

/// The bytes of a block that are in kFirst, a bit a byte, the first byte's the lowest.
#ifdef __SSE2__
unsigned FirstsIn(const char* block)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    __m128i found = _mm_setzero_si128();
    for (const char c : kFirst)
        found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)));
    return static_cast<unsigned>(_mm_movemask_epi8(found));
}
#else
unsigned FirstsIn(const char* block)
{
    unsigned found = 0;
    for (std::size_t i = 0; i < kBlock; ++i)
        for (const char c : kFirst)
            found |= static_cast<unsigned>(block[i] == c) << i;
    return found;
}
#endif

} // namespace

Triggers ScanLine(std::string_view line)
{
    if (line.empty())
        return 0;
    Triggers triggers = StartTriggers(line);
    const auto add_block = [&](std::size_t from, unsigned firsts) {
        for (; firsts != 0; firsts &= firsts - 1)
            triggers |=
                HeadTrigger(line.substr(from + static_cast<std::size_t>(std::countr_zero(firsts))));
    };
    std::size_t from = 0;
    for (; from + kBlock <= line.size(); from += kBlock)
        add_block(from, FirstsIn(line.data() + from));
    if (from == line.size())
        return triggers;
    if (from != 0) { // the last block once more, up to the line's end
        from = line.size() - kBlock;
        add_block(from, FirstsIn(line.data() + from));
    } else {
        std::array<char, kBlock> rest{};
        line.copy(rest.data(), kBlock);
        add_block(0, FirstsIn(rest.data()));
    }
    return triggers;
}

} // namespace kiv
