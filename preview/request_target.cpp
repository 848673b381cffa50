#include "preview/request_target.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

/// The value of a hexadecimal digit; 16 or more: it is none.
std::size_t HexValue(char c)
{
    return kHexDigits.find(AsciiUpper(c));
}

/// Nothing when a "%" is not followed by two digits.
std::optional<std::string> Decoded(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded.push_back(text[i]);
            continue;
        }
        if (i + 2 >= text.size())
            return std::nullopt;
        const std::size_t high = HexValue(text[i + 1]);
        const std::size_t low = HexValue(text[i + 2]);
        if (high == npos || low == npos)
            return std::nullopt;
        decoded.push_back(static_cast<char>(high * 16 + low));
        i += 2;
    }
    return decoded;
}

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool MayBeName(std::string_view name)
{
    return name != "." && name != ".." && !Contains(name, "/") && !Contains(name, "\\") &&
           std::ranges::none_of(name, IsControl);
}

bool StaysAsItIs(char c)
{
    constexpr std::string_view kMarks = "-._~!$'()*+,;=:@";
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           kMarks.find(c) != npos;
}

} // namespace

std::optional<TargetPath> ReadTarget(std::string_view target)
{
    target = target.substr(0, target.find_first_of("?#"));
    if (!target.starts_with('/'))
        return std::nullopt;
    TargetPath path;
    path.is_folder = target.ends_with('/');
    target.remove_prefix(1);
    if (path.is_folder && !target.empty())
        target.remove_suffix(1);
    for (const std::string_view part : Split(target, '/')) {
        std::optional<std::string> name = Decoded(part);
        if (!name || !MayBeName(*name))
            return std::nullopt;
        path.names.push_back(std::move(*name));
    }
    return path;
}

std::string_view QueryOf(std::string_view target)
{
    const std::size_t mark = target.find('?');
    return mark == npos ? std::string_view() : target.substr(mark + 1);
}

std::string QueryValue(std::string_view query, std::string_view name)
{
    for (const std::string_view pair : Split(query, '&'))
        if (Before(pair, '=') == name && pair.size() > name.size())
            return Decoded(pair.substr(name.size() + 1)).value_or("");
    return {};
}

std::string SitePath(std::span<const std::string> names)
{
    std::string path;
    for (const std::string& name : names)
        path.append("/").append(name);
    return path.empty() ? "/" : path;
}

std::string EncodedName(std::string_view name)
{
    std::string encoded;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (StaysAsItIs(c))
            encoded.push_back(c);
        else
            encoded.append({'%', kHexDigits[byte / 16], kHexDigits[byte % 16]});
    }
    return encoded;
}

std::string EncodedPath(std::span<const std::string> names)
{
    std::string path;
    for (const std::string& name : names)
        path.append("/").append(EncodedName(name));
    return path.empty() ? "/" : path;
}

} // namespace kiv
