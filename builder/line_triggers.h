// Most lines hold nothing to expand. One pass over a line tells which steps of the merge can act on
// it at all.
#pragma once

#include <cstdint>
#include <string_view>

namespace kiv {

/// What a line holds that a step of the merge may act on, as a set of bits.
enum Trigger : std::uint32_t {
    kPrefix = 1U << 0,     // begins with "DIR1:", "ASP:" or "HTM:"
    kMarker = 1U << 1,     // begins with "<!--"
    kWrapEnd = 1U << 2,    // is "]]"
    kWrapper = 1U << 3,    // begins with "[["
    kBang = 1U << 4,       // holds "!!"
    kDollar = 1U << 5,     // holds "$$"
    kReference = 1U << 6,  // holds "?!" or "??"
    kAt = 1U << 7,         // holds "@"
    kDirective = 1U << 16, // begins with "@"
    kAtNumber = 1U << 15,  // holds "@@"
    kPercent = 1U << 8,    // holds "%%"
    kStyle = 1U << 9,      // holds "<style>"
    kOption = 1U << 10,    // holds "<option value="
    kEscape = 1U << 11,    // holds "{}", "{{" or "}}"
    kMeta = 1U << 12,      // holds "<META NAME=" (template lines)
    kPosition = 1U << 13,  // first and third character are "=" (template lines)
    kFileText = 1U << 14,  // begins with "!++" (body lines)
    kTemplateOnly = kMeta | kPosition,
    kBodyOnly = kFileText,
};

using Triggers = std::uint32_t;

/// The triggers of a line.
Triggers ScanLine(std::string_view line);

} // namespace kiv
