#include "cli/call_argument.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// Whether all characters of a path (UTF-8) are letters, digits or among `others`: no shell reads
/// anything else into these.
bool IsPlain(std::string_view path, std::string_view others)
{
    return std::ranges::all_of(path, [&](char c) {
        const bool is_ascii_letter = AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z';
        const bool is_digit = c >= '0' && c <= '9';
        const bool is_beyond_ascii = (static_cast<unsigned char>(c) & 0x80) != 0;
        return is_ascii_letter || is_digit || is_beyond_ascii || others.find(c) != npos;
    });
}

} // namespace

std::string PosixArgument(std::string_view path)
{
    std::string word = (path.starts_with('-') ? "./" : "") + std::string(path);
    if (IsPlain(word, "/._-+:,@"))
        return word;
    ReplaceEach(word, "'", "'\\''");
    return "'" + word + "'";
}

std::string WindowsArgument(std::string_view path)
{
    std::string word = (path.starts_with('-') ? ".\\" : "") + std::string(path);
    if (IsPlain(word, "\\/._-+:"))
        return word;
    // A backslash before the closing quote would make a character of it.
    return "\"" + word + (word.ends_with('\\') ? "\\\"" : "\"");
}

std::string CallArgument(std::string_view path)
{
#ifdef _WIN32
    return WindowsArgument(path);
#else
    return PosixArgument(path);
#endif
}

} // namespace kiv
