#include "platform/clock.h"

#include <array>
#include <cstddef>
#include <ctime>

namespace kiv {

std::string_view MonthName(int month)
{
    static constexpr std::array<std::string_view, 12> kNames = {
        "January", "February", "March",     "April",   "May",      "June",
        "July",    "August",   "September", "October", "November", "December"};
    return kNames[static_cast<std::size_t>(month - 1)];
}

DateTime SystemClock::Now()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

} // namespace kiv
