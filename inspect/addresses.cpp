#include "inspect/addresses.h"

#include "inspect/server_code.h"
#include "platform/drive_path.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

bool IsSchemeCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '-' || c == '.';
}

/// What stands before a ":" that is not part of a path; "" when there is none.
std::string_view SchemeOf(std::string_view text)
{
    std::size_t size = 0;
    while (size < text.size() && IsSchemeCharacter(text[size]))
        ++size;
    return size < text.size() && text[size] == ':' ? text.substr(0, size) : std::string_view();
}

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char upper = AsciiUpper(c);
    return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : -1;
}

/// Line ends and tabs count for nothing, nor do blanks around.
std::string Tidied(std::string_view text)
{
    std::string tidied(text);
    std::erase_if(tidied, [](char c) { return c == '\n' || c == '\r' || c == '\t'; });
    return std::string(Trim(tidied));
}

AddressKind KindOf(std::string_view text)
{
    if (HoldsServerCode(text))
        return AddressKind::unknown;
    const std::string_view scheme = SchemeOf(text);
    if (scheme.size() == 1 || EqualsNoCase(scheme, "file"))
        return AddressKind::drive;
    if (!scheme.empty()) {
        const std::string_view rest = text.substr(scheme.size() + 1);
        const bool names_host = rest.size() > 2 && IsSeparator(rest[0]) && IsSeparator(rest[1]);
        return names_host ? AddressKind::external : AddressKind::other;
    }
    const bool names_host = text.size() > 1 && IsSeparator(text[0]) && IsSeparator(text[1]);
    return names_host ? AddressKind::external : AddressKind::site;
}

} // namespace

std::string WithoutPercents(std::string_view text)
{
    if (!Contains(text, "%"))
        return std::string(text);
    std::string bytes = ToUtf8(text);
    std::size_t end = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const int high = bytes[at] == '%' && at + 2 < bytes.size() ? HexDigit(bytes[at + 1]) : -1;
        const int low = high >= 0 ? HexDigit(bytes[at + 2]) : -1;
        bytes[end++] = low >= 0 ? static_cast<char>(high * 16 + low) : bytes[at];
        at += low >= 0 ? 2 : 0;
    }
    bytes.resize(end);
    return FromUtf8(bytes);
}

Address ReadAddress(std::string_view text)
{
    const std::string tidied = Tidied(text);
    Address address;
    address.kind = KindOf(HoldsServerCode(text) ? text : tidied);
    if (address.kind == AddressKind::unknown || address.kind == AddressKind::other)
        return address;
    const std::string_view whole = tidied;
    const std::string_view without_fragment = Before(whole, '#');
    if (without_fragment.size() < whole.size())
        address.fragment = WithoutPercents(whole.substr(without_fragment.size() + 1));
    std::string path(Before(without_fragment, '?'));
    address.has_backslash = Contains(path, "\\");
    std::ranges::replace(path, '\\', '/');
    address.from_root = path.starts_with('/');
    address.path = WithoutPercents(path);
    return address;
}

} // namespace kiv
