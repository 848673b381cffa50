#include "cli/values.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <chrono>
#include <numeric>

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

/// How many letters must be put in, left out, exchanged or swapped with their neighbour to make one
/// word of the other.
std::size_t Distance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> before_last;
    std::vector<std::size_t> last;
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (std::size_t i = 1; i <= from.size(); ++i) {
        before_last = std::move(last);
        last = std::move(row);
        row.assign(to.size() + 1, i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t exchanged = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, exchanged});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
    }
    return row.back();
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
    // A folder among the arguments is looked up by the command.
    if (row.takes == Takes::folder && row.IsOption() && value.empty())
        return std::string(row.name) + " needs a folder";
    return "";
}

std::string_view Nearest(std::string_view misspelled, const Choices& words)
{
    const std::string lower = LowerCase(misspelled);
    std::string_view nearest;
    std::size_t least = misspelled.size() / 3 + 1; // more is another word
    for (const std::string_view word : words) {
        const std::size_t distance = Distance(lower, word);
        if (distance < least) {
            least = distance;
            nearest = word;
        }
    }
    return nearest;
}

} // namespace kiv
