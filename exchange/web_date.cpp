#include "exchange/web_date.h"

#include "platform/clock.h"
#include "text/text.h"

#include <array>
#include <chrono>
#include <string>
#include <vector>

namespace kiv {

namespace {

constexpr WebTime kDay = 24 * 60 * 60;
constexpr std::array<std::string_view, 7> kWeekDays = {"Sun", "Mon", "Tue", "Wed",
                                                       "Thu", "Fri", "Sat"};

struct Moment {
    DateTime time;
    std::string_view week_day;
};

Moment MomentOf(WebTime time)
{
    const std::chrono::sys_seconds seconds{std::chrono::seconds{time}};
    const auto days = std::chrono::floor<std::chrono::days>(seconds);
    const std::chrono::year_month_day day{days};
    const std::chrono::hh_mm_ss clock{seconds - days};
    return {{static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
             static_cast<int>(static_cast<unsigned>(day.day())),
             static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
             static_cast<int>(clock.seconds().count())},
            kWeekDays[std::chrono::weekday{days}.c_encoding()]};
}

std::string Digits(int number, std::size_t count)
{
    const std::string digits = Decimal(number);
    return digits.size() >= count ? digits : std::string(count - digits.size(), '0') + digits;
}

std::string ClockText(const DateTime& time)
{
    return Digits(time.hour, 2) + ":" + Digits(time.minute, 2) + ":" + Digits(time.second, 2);
}

/// 1 to 12; 0 for what is no month.
unsigned MonthOf(std::string_view name)
{
    for (int month = 1; month <= 12; ++month)
        if (EqualsNoCase(MonthName(month), name))
            return static_cast<unsigned>(month);
    return 0;
}

bool IsNumber(std::string_view text)
{
    return !text.empty() && text.size() <= 4 && text.find_first_not_of("0123456789") == npos;
}

} // namespace

std::optional<WebTime> TimeOfNewsDate(std::string_view date)
{
    const std::vector<std::string_view> words = Split(Trim(date), ' ');
    if (words.size() != 3 || !words[1].ends_with(','))
        return std::nullopt;
    const std::string_view day = words[1].substr(0, words[1].size() - 1);
    if (!IsNumber(day) || !IsNumber(words[2]))
        return std::nullopt;
    const std::chrono::year_month_day when{
        std::chrono::year{NumericHead(words[2])}, std::chrono::month{MonthOf(words[0])},
        std::chrono::day{static_cast<unsigned>(NumericHead(day))}};
    if (!when.ok() || when.year() < std::chrono::year{1}) // XML's dates know no year 0
        return std::nullopt;
    return std::chrono::sys_days{when}.time_since_epoch().count() * kDay;
}

std::string IsoTime(WebTime time)
{
    const DateTime when = MomentOf(time).time;
    return Digits(when.year, 4) + "-" + Digits(when.month, 2) + "-" + Digits(when.day, 2) + "T" +
           ClockText(when) + "Z";
}

std::string MailTime(WebTime time)
{
    const Moment moment = MomentOf(time);
    const DateTime& when = moment.time;
    return std::string(moment.week_day) + ", " + Digits(when.day, 2) + " " +
           std::string(MonthName(when.month).substr(0, 3)) + " " + Digits(when.year, 4) + " " +
           ClockText(when) + " +0000";
}

} // namespace kiv
