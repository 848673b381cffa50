#include "builder/line_triggers.h"

#include "builder/mark_search.h"
#include "text/text.h"

#include <array>
#include <bit>
#include <cstddef>

namespace kiv {

namespace {

using CharacterSet = std::array<bool, 256>;

constexpr CharacterSet SetOf(std::string_view characters)
{
    CharacterSet set{};
    for (const char c : characters)
        set[static_cast<unsigned char>(c)] = true;
    return set;
}

constexpr CharacterSet kTagStarts = SetOf("zsSomM"); // MarksFrom leaves other tags out

/// `rest` begins with "<". Most tags are none that count.
Triggers TagTrigger(std::string_view rest)
{
    if (rest.size() < 2 || !kTagStarts[static_cast<unsigned char>(rest[1])])
        return 0;
    switch (rest[1]) {
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

/// The characters that a line can begin with when its beginning is a trigger.
constexpr CharacterSet kStarts = SetOf("=@AaHhDd[]!;+");

/// `line` begins with one of `kStarts`.
Triggers TriggerOfStart(std::string_view line)
{
    switch (line[0]) {
    case '=':
        return line.size() >= 3 && line[2] == '=' ? kPosition : 0U;
    case '@':
        return kDirective;
    case 'A':
    case 'a':
        return StartsWithNoCase(line, "ASP:") ? kPrefix : 0U;
    case 'H':
    case 'h':
        return StartsWithNoCase(line, "HTM:") ? kPrefix : 0U;
    case 'D':
    case 'd':
        return StartsWithNoCase(line, "DIR1:") ? kPrefix : 0U;
    case '[':
        return line.starts_with("[[") ? kWrapper : 0U;
    case ']':
        return line == "]]" ? kWrapEnd : 0U;
    case '!':
        return line.starts_with("!++") ? kFileText : 0U;
    default:
        return kListSign;
    }
}

/// Few lines begin so that more than their first character has to be looked at.
Triggers StartTriggers(std::string_view line)
{
    const Triggers defining = line.size() > 4 && line[4] == '=' ? kDefining : 0U;
    if (line[0] == '<')
        return defining |
               (line.size() > 3 && line[1] == '!' && line.starts_with("<!--") ? kMarker : 0U);
    return defining | (kStarts[static_cast<unsigned char>(line[0])] ? TriggerOfStart(line) : 0U);
}

} // namespace

Triggers ScanLine(std::string_view line)
{
    if (line.empty())
        return 0;
    Triggers triggers = StartTriggers(line);
    for (std::size_t from = 0; from < line.size(); from += kStretch)
        for (std::uint64_t marks = MarksFrom(line, from); marks != 0; marks &= marks - 1)
            triggers |=
                HeadTrigger(line.substr(from + static_cast<std::size_t>(std::countr_zero(marks))));
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
        if (!TakeStretch(marks))
            break;
    }
    marks_ = 0;
    const std::string_view line = text_.substr(next_);
    next_ = text_.size();
    triggers = found | StartTriggers(line);
    return line;
}

/// False when the text has no further one.
bool LineScanner::TakeStretch(std::uint64_t& marks)
{
    if (first_ahead_ == ahead_count_) {
        if (seen_ >= text_.size())
            return false;
        first_ahead_ = 0;
        ahead_count_ = MarksFrom(text_, seen_, ahead_);
    }
    marks = ahead_[first_ahead_++];
    seen_ += kStretch;
    return true;
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

} // namespace kiv
