#include "platform/windows_text.h"

#include "platform/windows_system.h"
#include "text/windows1252.h"

namespace kiv {

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
    return FromUtf8(Utf8FromWide(wide));
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
