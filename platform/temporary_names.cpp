#include "platform/temporary_names.h"

#include <array>
#include <atomic>
#include <charconv>

namespace kiv {

namespace {

constexpr std::string_view kBegin = ".kiv-";
constexpr std::string_view kEnd = ".tmp";
constexpr std::size_t kMarkDigits = 16;
constexpr std::size_t kLongestKept = 150; // a name of 255 bytes has room for it and all the rest

unsigned NewNumber()
{
    static std::atomic<unsigned> number{0};
    return ++number;
}

/// Everything but the end.
std::string Beginning(int process)
{
    std::string name(kBegin);
    return name.append(std::to_string(process)).append("-").append(std::to_string(NewNumber()));
}

/// Takes a number and what must stand before it from the beginning of `text`.
template <typename Number>
bool TakeNumber(std::string_view& text, std::string_view before, Number& number, int base = 10)
{
    if (!text.starts_with(before))
        return false;
    const char* const begin = text.data() + before.size();
    const auto [rest, fault] = std::from_chars(begin, text.data() + text.size(), number, base);
    if (fault != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    return true;
}

void AppendMark(std::string& name, std::string_view content)
{
    std::array<char, kMarkDigits> digits{};
    const auto [end, fault] =
        std::to_chars(digits.data(), digits.data() + digits.size(), MarkOf(content), 16);
    name.append("-").append(digits.data(), end);
}

/// A name of either kind; of the first one, `swap` stays as it is.
struct Temporary {
    int process = 0; // 0: it is neither
    std::optional<SwapName> swap;
};

Temporary Read(std::string_view name)
{
    int process = 0;
    unsigned number = 0;
    if (!name.ends_with(kEnd) || !TakeNumber(name, kBegin, process) || process <= 0 ||
        !TakeNumber(name, "-", number))
        return {};
    if (name == kEnd)
        return {process, std::nullopt};
    SwapName swap{};
    if (!TakeNumber(name, "-", swap.old_mark, 16) || !TakeNumber(name, "-", swap.draft_mark, 16) ||
        !name.starts_with('-') || name.size() <= 1 + kEnd.size())
        return {};
    swap.name = name.substr(1, name.size() - 1 - kEnd.size());
    return {process, swap};
}

/// Not more of a name than there is room for, and no half character of it.
std::string_view CutName(std::string_view name)
{
    constexpr auto is_inside = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    };
    if (name.size() <= kLongestKept)
        return name;
    std::size_t size = kLongestKept;
    while (size > 1 && is_inside(name[size]))
        --size;
    return name.substr(0, size);
}

} // namespace

std::string NewTemporaryName(int process)
{
    return Beginning(process).append(kEnd);
}

std::uint64_t MarkOf(std::string_view content)
{
    std::uint64_t mark = 14695981039346656037U; // FNV-1a
    for (const char c : content)
        mark = (mark ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return mark;
}

std::string NewSwapName(int process, std::string_view name, std::string_view old_content,
                        std::string_view draft)
{
    std::string temporary = Beginning(process);
    AppendMark(temporary, old_content);
    AppendMark(temporary, draft);
    return temporary.append("-").append(CutName(name)).append(kEnd);
}

std::optional<SwapName> ReadSwapName(std::string_view temporary)
{
    return Read(temporary).swap;
}

int ProcessOfTemporary(std::string_view name)
{
    return Read(name).process;
}

} // namespace kiv
