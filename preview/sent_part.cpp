#include "preview/sent_part.h"

#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace kiv {

namespace {

struct Part {
    std::uint64_t from = 0; // 0-based
    std::uint64_t end = 0;  // behind it
};

std::optional<std::uint64_t> NumberIn(std::string_view digits)
{
    std::uint64_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (digits.empty() || stop != end || error != std::errc())
        return std::nullopt;
    return number;
}

/// What of `size` bytes a range means; nothing when it is none. Empty: there is no such part.
std::optional<Part> PartOf(std::string_view range, std::uint64_t size)
{
    constexpr std::string_view kUnit = "bytes=";
    if (!range.starts_with(kUnit))
        return std::nullopt;
    range.remove_prefix(kUnit.size());
    const std::size_t dash = range.find('-');
    if (dash == npos)
        return std::nullopt;
    const std::optional<std::uint64_t> first = NumberIn(range.substr(0, dash));
    const std::optional<std::uint64_t> last = NumberIn(range.substr(dash + 1));
    const bool is_open = dash + 1 == range.size();
    if ((!first && dash > 0) || (!last && !is_open) || (!first && !last) ||
        (first && last && *last < *first))
        return std::nullopt;
    if (!first) // so many bytes at the end
        return Part{size - std::min(*last, size), size};
    return Part{std::min(*first, size), last ? std::min(*last, size - 1) + 1 : size};
}

} // namespace

void SendPart(HttpAnswer& answer, std::shared_ptr<NativeFile> file, std::string_view range)
{
    const std::uint64_t size = file->Size();
    const std::optional<Part> asked = size > 0 ? PartOf(range, size) : std::nullopt;
    const Part part = asked.value_or(Part{0, size});
    answer.fields.emplace_back("Accept-Ranges", "bytes");
    if (asked && part.from >= part.end) {
        answer.status = 416;
        answer.fields.emplace_back("Content-Range", "bytes */" + std::to_string(size));
        return;
    }
    answer.from = part.from;
    answer.count = part.end - part.from;
    answer.file = std::move(file);
    if (!asked)
        return;
    answer.status = 206;
    answer.fields.emplace_back("Content-Range",
                               Joined({"bytes ", std::to_string(part.from), "-",
                                       std::to_string(part.end - 1), "/", std::to_string(size)}));
}

} // namespace kiv
