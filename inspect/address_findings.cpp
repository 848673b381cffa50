// Mail addresses and style sheets that hold the name of an at-variable.
#include "builder/at_variables.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/word_slips.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kMail = "!!mailto[";

/// The at-variable that the text begins with, as it is written there; "": none.
std::string_view VariableAt(std::string_view text)
{
    std::string_view taken;
    for (const std::string_view name : AtVariableNames())
        if (name.starts_with('@') && name.size() > taken.size() && StartsWithNoCase(text, name))
            taken = text.substr(0, name.size());
    return taken;
}

bool IsLetterOrDigit(char c)
{
    return c != '_' && IsWordCharacter(c);
}

/// What stands around an "@" without blanks and brackets; `at` counts from the line's begin.
std::string_view AddressAround(std::string_view line, std::size_t at)
{
    const auto is_part = [](char c) {
        return IsWordCharacter(c) || c == '.' || c == '-' || c == '+';
    };
    std::size_t begin = at;
    while (begin > 0 && is_part(line[begin - 1]))
        --begin;
    std::size_t end = at + 1;
    while (end < line.size() && is_part(line[end]))
        ++end;
    while (line[end - 1] == '.')
        --end; // a sentence's full stop
    return line.substr(begin, end - begin);
}

/// Whether the words behind an "@" are a mail server's. A file's name may be put together with
/// at-variables, too.
bool IsHost(std::string_view words)
{
    constexpr std::string_view kOfFiles[] = {"htm", "html", "asp", "php", "gif", "jpg", "jpeg",
                                             "png", "css",  "js",  "txt", "pdf", "xml", "mp3"};
    const std::size_t dot = words.rfind('.');
    if (dot == npos || dot == 0 || words.size() < dot + 3)
        return false;
    const std::string_view end = words.substr(dot + 1);
    return std::ranges::all_of(
               end, [](char c) { return AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z'; }) &&
           std::ranges::none_of(kOfFiles,
                                [&](std::string_view known) { return EqualsNoCase(known, end); });
}

/// Whether the "@" is of a mail macro, which takes addresses before at-variables are looked for.
bool IsInMailMacro(std::string_view line, std::size_t at)
{
    const std::string before = UpperCase(line.substr(0, at));
    const std::size_t macro = before.rfind(UpperCase(kMail));
    return macro != npos && before.find(']', macro) == npos;
}

/// An address in which an at-variable stands; "": none. A name in capitals that ends where the
/// word ends is put there on purpose.
std::string_view EatenAddress(std::string_view line, std::size_t at)
{
    const std::string_view rest = line.substr(at);
    const std::string_view variable = VariableAt(rest);
    if (variable.empty() || at == 0 || !IsLetterOrDigit(line[at - 1]) || IsInMailMacro(line, at))
        return {};
    const bool is_whole = HeadWord(rest.substr(1)).size() + 1 == variable.size();
    if (is_whole && IsUpperCase(variable))
        return {};
    const std::string_view address = AddressAround(line, at);
    return IsHost(address.substr(address.find('@') + 1)) ? address : std::string_view();
}

/// The rule of a style sheet that begins with "@font"; "": none stands there.
std::string_view EatenRule(std::string_view line, std::size_t at)
{
    constexpr std::string_view kRules[] = {"@font-face", "@font-feature-values",
                                           "@font-palette-values"};
    for (const std::string_view rule : kRules)
        if (StartsWithNoCase(line.substr(at), rule))
            return line.substr(at, rule.size());
    return {};
}

void LookAt(std::string_view line, const Place& place, FindingSink& sink)
{
    for (std::size_t at = line.find('@'); at != npos; at = line.find('@', at + 1)) {
        const std::string_view variable = VariableAt(line.substr(at));
        if (const std::string_view rule = EatenRule(line, at); !rule.empty())
            sink.Add(place,
                     Joined({"\"", rule, "\" is a rule of a style sheet, but \"", variable,
                             "\" in it is taken for an at-variable"}),
                     "put the style into a file of its own");
        else if (const std::string_view address = EatenAddress(line, at); !address.empty())
            sink.Add(
                place,
                Joined({"\"", variable, "\" in \"", address, "\" is taken for an at-variable"}),
                "write \"&#64;\" for the \"@\", or use !!mailto[");
    }
}

/// Mail macros with an address without "@", of which nothing is left.
void LookForLostMail(std::string_view line, const Place& place, FindingSink& sink)
{
    const std::string capitals = UpperCase(line);
    const std::string mark = UpperCase(kMail);
    for (std::size_t at = capitals.find(mark); at != npos; at = capitals.find(mark, at + 1)) {
        const std::size_t begin = at + mark.size();
        const std::size_t end = line.find(']', begin);
        if (end == npos)
            return;
        std::string_view address = line.substr(begin, end - begin);
        if (address.ends_with('!')) // shows the address
            address.remove_suffix(1);
        // Macros and variables may bring an "@".
        if (!address.empty() && address.find_first_of("@%$!?[") == npos)
            sink.Add(
                place,
                Joined({"\"", address, "\" of ", kMail, " has no \"@\", so nothing is left of it"}),
                "write the whole address, as in \"!!mailto[user@site.org]\"");
    }
}

} // namespace

void FindEatenAddresses(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources)
        for (std::size_t index = 0; index < source.lines.size(); ++index) {
            const LineParts parts = source.PartsOf(index);
            if (!parts.Has(LinePart::body) && !parts.Has(LinePart::frame) && !parts.HasRole())
                continue;
            const Place place = site.PlaceOf(source, static_cast<int>(index) + 1);
            LookAt(source.lines[index], place, sink);
            LookForLostMail(source.lines[index], place, sink);
        }
}

} // namespace kiv
