#include "platform/windows/wide_text.h"

#include "platform/exact_names.h"
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

/// The text of a name, piece by piece: names may hold half a character, which UTF-8 cannot.
std::string FromPieces(std::wstring_view wide, std::string (*from_utf8)(std::string_view))
{
    std::string text;
    text.reserve(wide.size());
    while (!wide.empty()) {
        const std::size_t whole = std::min(FirstHalfCharacter(wide), wide.size());
        text += from_utf8(Utf8FromWide(wide.substr(0, whole)));
        if (whole < wide.size())
            text += "&#" + std::to_string(static_cast<unsigned>(wide[whole])) + ";";
        wide.remove_prefix(std::min(whole + 1, wide.size()));
    }
    return text;
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
    return FromPieces(wide, FromUtf8);
}

std::string ExactFromWide(std::wstring_view wide)
{
    return FromPieces(wide, ExactName);
}

std::wstring WideFromExact(std::string_view exact)
{
    std::wstring wide;
    std::size_t begin = 0; // of what stands before the next half character
    for (std::size_t at = 0; at < exact.size();) {
        const std::optional<Reference> reference = ReferenceAt(exact, at);
        const std::size_t next = at + (reference ? reference->size : 1);
        if (reference && IsHalf(reference->point)) {
            wide += WideFromUtf8(NativeName(exact.substr(begin, at - begin)));
            wide.push_back(static_cast<wchar_t>(reference->point));
            begin = next;
        }
        at = next;
    }
    return wide + WideFromUtf8(NativeName(exact.substr(begin)));
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
