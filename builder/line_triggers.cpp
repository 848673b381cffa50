#include "builder/line_triggers.h"

#include "text/text.h"

#include <array>
#include <cstddef>

namespace kiv {

namespace {

/// What a byte can be the first character of.
using ByteTable = std::array<bool, 256>;

constexpr ByteTable kStartsTrigger = [] {
    ByteTable table{};
    for (const char c : {'!', '$', '?', '@', '%', '<', '{', '}'})
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

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
        return kAt;
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
    if (line.size() >= 3 && line[0] == '=' && line[2] == '=')
        triggers |= kPosition;
    switch (line[0]) {
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
        if (line.starts_with("<!--"))
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

} // namespace

Triggers ScanLine(std::string_view line)
{
    if (line.empty())
        return 0;
    Triggers triggers = StartTriggers(line);
    for (std::size_t i = 0; i < line.size(); ++i)
        if (kStartsTrigger[static_cast<unsigned char>(line[i])])
            triggers |= HeadTrigger(line.substr(i));
    return triggers;
}

} // namespace kiv
