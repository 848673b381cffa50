#include "inspect/server_code.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

// HTML takes the first one for a blank, so that it may stand anywhere in the text of a page. Where
// a blank would end a value, it is the other one.
constexpr std::string_view kMark = "\f";
constexpr std::string_view kMarkInWord = "\xEE\x80\x80"; // U+E000, which is nobody's
constexpr std::string_view kMarkInText = "&#57344;";     // the same in Windows-1252

/// What ends the code that begins here; "" when none begins.
std::string_view EndOfCode(std::string_view rest)
{
    if (rest.starts_with("<%"))
        return "%>";
    if (!rest.starts_with("<?"))
        return {};
    const char next = rest.size() > 2 ? rest[2] : '\n';
    const bool is_code = next == '=' || next == ' ' || next == '\t' || next == '\r' ||
                         next == '\n' || StartsWithNoCase(rest, "<?php");
    return is_code ? "?>" : std::string_view();
}

bool EndsWord(char c)
{
    constexpr std::string_view kEnds = "\"'> \t\r\n\f";
    return Contains(kEnds, std::string_view(&c, 1));
}

} // namespace

std::size_t ServerCodeSize(std::string_view rest)
{
    const std::string_view end = EndOfCode(rest);
    if (end.empty())
        return 0;
    const std::size_t stop = rest.find(end, 2);
    return stop == npos ? rest.size() : stop + end.size();
}

std::string WithoutServerCode(std::string_view page, bool& found)
{
    found = false;
    std::string text;
    text.reserve(page.size());
    while (!page.empty()) {
        const std::size_t at = std::min(page.find('<'), page.size());
        text.append(page.substr(0, at));
        page.remove_prefix(at);
        const std::size_t size = ServerCodeSize(page);
        if (size == 0) {
            text.append(page.substr(0, 1));
            page.remove_prefix(std::min<std::size_t>(1, page.size()));
            continue;
        }
        found = true;
        const std::string_view code = page.substr(0, size);
        text.append(text.empty() || EndsWord(text.back()) ? kMark : kMarkInWord);
        text.append(static_cast<std::size_t>(std::ranges::count(code, '\n')), '\n');
        page.remove_prefix(code.size());
    }
    return text;
}

bool HoldsServerCode(std::string_view part)
{
    return Contains(part, kMark) || Contains(part, kMarkInText);
}

} // namespace kiv
