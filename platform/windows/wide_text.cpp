#include "platform/windows/wide_text.h"

#include "platform/windows/api.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

bool IsHigh(wchar_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(wchar_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Where the first surrogate without its other half stands; the size when there is none.
std::size_t FirstHalfCharacter(std::wstring_view wide)
{
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (IsHigh(wide[i]) && i + 1 < wide.size() && IsLow(wide[i + 1]))
            ++i;
        else if (IsHigh(wide[i]) || IsLow(wide[i]))
            return i;
    }
    return wide.size();
}

} // namespace

std::wstring WideText(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    for (const char c : text)
        wide.push_back(static_cast<wchar_t>(CodePoint(c)));
    return wide;
}

std::string FromWide(std::wstring_view wide)
{
    std::string text;
    text.reserve(wide.size());
    while (!wide.empty()) {
        // Names may hold half a character, which UTF-8 cannot.
        const std::size_t whole = std::min(FirstHalfCharacter(wide), wide.size());
        text += FromUtf8(Utf8FromWide(wide.substr(0, whole)));
        if (whole < wide.size())
            text += "&#" + std::to_string(static_cast<unsigned>(wide[whole])) + ";";
        wide.remove_prefix(std::min(whole + 1, wide.size()));
    }
    return text;
}

std::wstring WideFromUtf8(std::string_view utf8)
{
    const int size = static_cast<int>(utf8.size());
    const int units = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), units);
    return wide;
}

std::string Utf8FromWide(std::wstring_view wide)
{
    const int size = static_cast<int>(wide.size());
    const int bytes =
        ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), bytes, nullptr, nullptr);
    return utf8;
}

} // namespace kiv
