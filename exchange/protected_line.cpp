#include "exchange/protected_line.h"

#include "builder/at_variables.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

constexpr std::array<std::string_view, 7> kFamilies = {"@@", "??", "%%", "!!", "[[", "?!", "$$"};

// What is acted on after the variables have been put in can be kept from nothing.
constexpr std::array<std::string_view, 3> kEscapes = {"{}", "{{", "}}"};

// Lines that begin so are taken for something else; those with "@" are seen to by themselves.
constexpr std::array<std::string_view, 9> kStarts = {";",    "++",   "[[",    "]]", "<title>",
                                                     "ASP:", "HTM:", "DIR1:", "=="};

bool IsDigit(char c)
{
    return c >= '1' && c <= '9';
}

bool HasNumbered(std::string_view text, std::string_view family)
{
    for (std::size_t at = text.find(family); at != npos; at = text.find(family, at + 1))
        if (at + 2 < text.size() && IsDigit(text[at + 2]))
            return true;
    return false;
}

/// Whether the text begins with a variable's name, whose first character it has.
bool IsAtVariable(std::string_view text)
{
    static const std::vector<std::string_view> names = AtVariableNames();
    return std::ranges::any_of(names, [&](std::string_view name) {
        return name.front() == text.front() && StartsWithNoCase(text, name);
    });
}

bool HasAtVariable(std::string_view text)
{
    for (std::size_t at = text.find_first_of(kAtVariableStarts); at != npos;
         at = text.find_first_of(kAtVariableStarts, at + 1))
        if (IsAtVariable(text.substr(at)))
            return true;
    return false;
}

/// Whether something is acted on that cannot be broken up.
bool IsBeyondHelp(std::string_view part)
{
    constexpr std::string_view kUnsaid("\0\r", 2);
    return part.size() > kLongestSaidLine || part.find_first_of(kUnsaid) != npos ||
           std::ranges::any_of(kEscapes,
                               [&](std::string_view escape) { return Contains(part, escape); }) ||
           HasNumbered(part, "@@") || HasNumbered(part, "%%") || ContainsNoCase(part, "!!POP") ||
           ContainsNoCase(part, "!!SWAP") || HasAtVariable(part);
}

constexpr std::string_view kActedOnStarts = "!$?<"; // of IsActedOn

/// Whether two characters begin what is acted on, with `behind` after them.
bool IsActedOn(std::string_view two, char behind)
{
    if (two == "!!")
        return true;
    if (two == "$$" || two == "??" || two == "?!")
        return IsDigit(behind);
    return two == "<z" && behind == 'u';
}

/// "=1=" and its kin, a definition, a mark, and what else only the beginning of a line is.
bool IsStartActedOn(std::string_view line)
{
    const bool is_definition = line.size() > 4 && line[4] == '=' &&
                               std::ranges::any_of(kFamilies, [&](std::string_view family) {
                                   return line.starts_with(family);
                               });
    return is_definition || line.starts_with('@') ||
           (line.size() > 2 && line[0] == '=' && line[2] == '=') ||
           EqualsNoCase(line, "<!--TOC HERE-->") || EqualsNoCase(line, "<!--SITEMAPHERE-->") ||
           EqualsNoCase(line, "<!--DROPDOWN HERE-->") || EqualsNoCase(line, "<!--BODY HERE-->") ||
           std::ranges::any_of(
               kStarts, [&](std::string_view start) { return StartsWithNoCase(line, start); });
}

} // namespace

// A list of pages may be marked by the page itself, and a file's text is put in at the very end.
bool CannotBegin(std::string_view line)
{
    return line.starts_with("!++") || line.starts_with("<option value=") ||
           FromChar(line, 4).starts_with("<option value=");
}

std::optional<std::string> ProtectedPart(std::string_view part)
{
    if (IsBeyondHelp(part))
        return std::nullopt;
    std::string text;
    std::size_t done = 0;
    for (std::size_t at = part.find_first_of(kActedOnStarts); at != npos;
         at = part.find_first_of(kActedOnStarts, at + 1))
        if (IsActedOn(part.substr(at, 2), at + 2 < part.size() ? part[at + 2] : '\0')) {
            text.append(part, done, at + 1 - done).append(kNothing);
            done = at + 1;
        }
    return text.append(part, done);
}

std::string ProtectedStart(std::string_view line)
{
    if (!IsStartActedOn(line))
        return std::string(line);
    // With an "=" behind it, the variable would be read as its definition.
    const bool is_definition = line.size() > 1 && line[1] == '=';
    return Joined({kNothing, is_definition ? kNothing : "", line});
}

std::optional<std::string> ProtectedLine(std::string_view line)
{
    if (CannotBegin(line))
        return std::nullopt;
    const std::optional<std::string> text = ProtectedPart(line);
    return text ? std::optional(ProtectedStart(*text)) : std::nullopt;
}

} // namespace kiv
