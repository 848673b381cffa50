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
    case 'z':
        return rest.starts_with("<zu") ? kBlockTag : 0U;
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

/// The trigger that a text begins with. Most of what is looked at begins with "<".
Triggers HeadTrigger(std::string_view rest)
{
    if (rest[0] == '<')
        return TagTrigger(rest);
    const char next = rest.size() > 1 ? rest[1] : '\0';
    switch (rest[0]) {
    case '@':
        return next == '@' ? kAt | kAtNumber : kAt;
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
constexpr std::size_t kStretch = 64; // as many as a set of marks has room for

/// The bytes of a block that are one of some characters, a bit a byte, the first byte's the lowest.
#ifdef __SSE2__
unsigned FindIn(const char* block, std::string_view characters)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    __m128i found = _mm_setzero_si128();
    for (const char c : characters)
        found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)));
    return static_cast<unsigned>(_mm_movemask_epi8(found));
}
#else
unsigned FindIn(const char* block, std::string_view characters)
{
    unsigned found = 0;
    for (std::size_t i = 0; i < kBlock; ++i)
        for (const char c : characters)
            found |= static_cast<unsigned>(block[i] == c) << i;
    return found;
}
#endif

unsigned FirstsIn(const char* block)
{
    return FindIn(block, kFirst);
}

/// The same for a stretch, and the ends of lines besides.
std::uint64_t MarksIn(const char* stretch)
{
    constexpr std::string_view kMarks = "!$?@%<{}\n";
    static_assert(kMarks.substr(0, kFirst.size()) == kFirst);
    std::uint64_t marks = 0;
    for (std::size_t block = 0; block < kStretch; block += kBlock)
        marks |= std::uint64_t{FindIn(stretch + block, kMarks)} << block;
    return marks;
}

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

std::string_view LineScanner::Next(Triggers& triggers)
{
    Triggers found = 0;
    std::uint64_t marks = marks_;
    for (;;) {
        for (; marks != 0; marks &= marks - 1) {
            const std::size_t at =
                seen_ - kStretch + static_cast<std::size_t>(std::countr_zero(marks));
            if (text_[at] == '\n') {
                marks_ = marks & (marks - 1);
                return Ended(at, found, triggers);
            }
            // No trigger goes past the end of its line.
            found |= HeadTrigger({text_.data() + at, text_.size() - at});
        }
        if (seen_ >= text_.size())
            break;
        marks = MarksAt(seen_);
        seen_ += kStretch;
    }
    marks_ = 0;
    const std::string_view line = text_.substr(next_);
    next_ = text_.size();
    triggers = found | StartTriggers(line);
    return line;
}

/// The line that begins at `next_` and ends with the LF at `end`; `found` stands in it.
std::string_view LineScanner::Ended(std::size_t end, Triggers found, Triggers& triggers)
{
    std::string_view line(text_.data() + next_, end - next_);
    next_ = end + 1;
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
        found |= kEndBehind;
    }
    triggers = line.empty() ? found : found | StartTriggers(line);
    return line;
}

/// The marks of the stretch that begins at `from`, a bit a character.
std::uint64_t LineScanner::MarksAt(std::size_t from) const
{
    if (from + kStretch <= text_.size())
        return MarksIn(text_.data() + from);
    std::array<char, kStretch> last{};
    text_.copy(last.data(), kStretch, from);
    return MarksIn(last.data());
}

} // namespace kiv
