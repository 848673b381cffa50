#include "cli/values.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <chrono>

namespace kiv {

namespace {

constexpr std::string_view kDigits = "0123456789";

/// "rs, js or ptop".
std::string Listed(const Choices& words)
{
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i)
        list.append(i == 0 ? "" : i + 1 < words.size() ? ", " : " or ").append(words[i]);
    return list;
}

} // namespace

std::optional<DateTime> ParseDateTime(std::string_view text)
{
    constexpr std::string_view kForm = "dddd-dd-ddTdd:dd:dd";
    if (text.size() != kForm.size())
        return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i)
        if (kForm[i] == 'd' ? !Contains(kDigits, text.substr(i, 1)) : text[i] != kForm[i])
            return std::nullopt;
    const auto number = [&](std::size_t from, std::size_t count) {
        return NumericHead(text.substr(from, count));
    };
    const DateTime time{number(0, 4),  number(5, 2),  number(8, 2),
                        number(11, 2), number(14, 2), number(17, 2)};
    const std::chrono::year_month_day day{std::chrono::year(time.year),
                                          std::chrono::month(static_cast<unsigned>(time.month)),
                                          std::chrono::day(static_cast<unsigned>(time.day))};
    const bool exists =
        time.year > 0 && day.ok() && time.hour < 24 && time.minute < 60 && time.second < 60;
    return exists ? std::optional(time) : std::nullopt;
}

std::optional<std::size_t> ParseNumber(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative)
        text.remove_prefix(1);
    if (text.empty() || text.find_first_not_of(kDigits) != npos)
        return std::nullopt;
    constexpr std::size_t kMost = 1000000;
    std::size_t number = 0;
    for (const char digit : text)
        number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), kMost);
    return negative ? 0 : number;
}

std::string ValueFault(const OptionRow& row, const std::string& value)
{
    const auto takes = [&](std::string_view what) {
        return std::string(row.name).append(" takes ").append(what).append(", not ") +
               (value.empty() ? "an empty value" : value);
    };
    if (row.choices != nullptr) {
        const Choices words = row.choices();
        if (std::find(words.begin(), words.end(), value) == words.end())
            return takes(Listed(words));
    }
    if (row.takes == Takes::number && !ParseNumber(value))
        return takes("a number");
    if (row.takes == Takes::date_time && !ParseDateTime(value))
        return takes(row.value);
    if (row.fault != nullptr)
        if (const std::string fault = row.fault(value); !fault.empty())
            return std::string(row.name).append(": ").append(fault);
    // A folder among the arguments is looked up by the command.
    if (row.takes == Takes::folder && row.IsOption() && value.empty())
        return std::string(row.name) + " needs a folder";
    return "";
}

} // namespace kiv
