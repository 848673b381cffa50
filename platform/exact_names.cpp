#include "platform/exact_names.h"

#include "text/windows1252.h"

#include <algorithm>
#include <cstdint>

namespace kiv {

namespace {

constexpr char32_t kLastPoint = 0x10FFFF;
constexpr char32_t kFirstByte = 0x110000; // numbers past the last character are stray bytes

bool IsByte(char32_t point)
{
    return point >= kFirstByte + 0x80 && point <= kFirstByte + 0xFF;
}

char ByteOf(char32_t point)
{
    return static_cast<char>(static_cast<unsigned char>(point - kFirstByte));
}

/// Whether the code page lacks this character.
bool IsLacking(char32_t point)
{
    std::string utf8;
    AppendUtf8(utf8, point);
    return point <= kLastPoint && !IsHalf(point) && FromUtf8(utf8).size() > 1;
}

std::string ReferenceTo(char32_t point)
{
    return "&#" + std::to_string(static_cast<std::uint32_t>(point)) + ";";
}

} // namespace

std::optional<Reference> ReferenceAt(std::string_view exact, std::size_t at)
{
    constexpr std::size_t kMostDigits = 7;
    if (exact.substr(at, 2) != "&#")
        return std::nullopt;
    const std::string_view digits = exact.substr(at + 2, kMostDigits + 1);
    const std::size_t count = std::min(digits.find_first_not_of("0123456789"), digits.size());
    if (count == digits.size() || digits[count] != ';' || digits[0] == '0')
        return std::nullopt;
    char32_t point = 0;
    for (const char digit : digits.substr(0, count))
        point = point * 10 + static_cast<char32_t>(digit - '0');
    if (count == 0 || !(point == U'&' || IsHalf(point) || IsByte(point) || IsLacking(point)))
        return std::nullopt;
    return Reference{point, count + 3};
}

std::string ExactName(std::string_view native)
{
    std::string exact;
    while (!native.empty()) {
        const std::size_t size = FirstUtf8(native).size;
        if (size == 0)
            exact += ReferenceTo(kFirstByte + static_cast<unsigned char>(native[0]));
        else if (ReferenceAt(native, 0))
            exact += ReferenceTo(U'&');
        else
            exact += FromUtf8(native.substr(0, size));
        native.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return exact;
}

std::string NativeName(std::string_view exact)
{
    std::string native;
    for (std::size_t at = 0; at < exact.size();) {
        const std::optional<Reference> reference = ReferenceAt(exact, at);
        if (reference && IsByte(reference->point))
            native.push_back(ByteOf(reference->point));
        else
            AppendUtf8(native, reference ? reference->point : CodePoint(exact[at]));
        at += reference ? reference->size : 1;
    }
    return native;
}

std::string TextOfName(std::string_view exact, std::string_view before, std::string_view after)
{
    std::string text;
    for (std::size_t at = 0; at < exact.size();) {
        const std::optional<Reference> reference = ReferenceAt(exact, at);
        if (!reference)
            text.push_back(exact[at]);
        else if (reference->point == U'&')
            text.push_back('&');
        else if (IsByte(reference->point))
            text.push_back(ByteOf(reference->point));
        else
            text.append(before)
                .append(std::to_string(static_cast<std::uint32_t>(reference->point)))
                .append(after);
        at += reference ? reference->size : 1;
    }
    return text;
}

std::string ExactNewName(std::string_view text, std::string_view old_exact)
{
    return ExactName(ToUtf8Keeping(text, NativeName(old_exact)));
}

} // namespace kiv
