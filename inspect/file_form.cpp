#include "inspect/file_form.h"

#include "text/text.h"

namespace kiv {

namespace {

/// Whether every second byte from `first` (0-based) on is zero.
bool HasZeros(std::string_view head, std::size_t first)
{
    for (std::size_t at = first; at < head.size(); at += 2)
        if (head[at] != '\0')
            return false;
    return head.size() > first;
}

} // namespace

bool HasByteOrderMark(std::string_view bytes)
{
    return bytes.starts_with("\xEF\xBB\xBF");
}

bool IsUtf16(std::string_view bytes)
{
    constexpr std::size_t kHead = 16;
    const std::string_view head = FirstChars(bytes, kHead);
    return head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF") ||
           (head.size() > 3 && (HasZeros(head, 0) || HasZeros(head, 1)));
}

bool HasOnlyLoneCr(std::string_view bytes)
{
    return Contains(bytes, "\r") && !Contains(bytes, "\n");
}

} // namespace kiv
