// Fixed text and values put together in one go.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kiv {

inline constexpr std::string_view kCrLf = "\r\n";

/// The pieces one after the other.
inline std::string Joined(std::initializer_list<std::string_view> pieces)
{
    std::size_t size = 0;
    for (const std::string_view piece : pieces)
        size += piece.size();
    std::string text;
    text.reserve(size);
    for (const std::string_view piece : pieces)
        text += piece;
    return text;
}

/// The pieces at the end of `text`, one after the other.
inline void Append(std::string& text, std::initializer_list<std::string_view> pieces)
{
    for (const std::string_view piece : pieces)
        text.append(piece);
}

/// The lines with CR LF between them and none at the end.
inline std::string JoinedLines(std::initializer_list<std::string_view> lines)
{
    std::string text;
    std::string_view separator;
    for (const std::string_view line : lines) {
        text.append(separator).append(line);
        separator = kCrLf;
    }
    return text;
}

} // namespace kiv
