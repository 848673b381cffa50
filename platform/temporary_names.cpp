#include "platform/temporary_names.h"

#include <atomic>
#include <charconv>

namespace kiv {

namespace {

constexpr std::string_view kBegin = ".kiv-";
constexpr std::string_view kEnd = ".tmp";

} // namespace

std::string NewTemporaryName(int process)
{
    static std::atomic<unsigned> number{0};
    std::string name(kBegin);
    name.append(std::to_string(process)).append("-").append(std::to_string(++number));
    return name.append(kEnd);
}

int ProcessOfTemporary(std::string_view name)
{
    if (!name.starts_with(kBegin) || !name.ends_with(kEnd))
        return 0;
    name.remove_prefix(kBegin.size());
    name.remove_suffix(kEnd.size());
    int process = 0;
    unsigned number = 0;
    const char* const end = name.data() + name.size();
    const auto [dash, fault] = std::from_chars(name.data(), end, process);
    if (fault != std::errc() || process <= 0 || dash == end || *dash != '-')
        return 0;
    const auto [rest, other_fault] = std::from_chars(dash + 1, end, number);
    return other_fault == std::errc() && rest == end ? process : 0;
}

} // namespace kiv
