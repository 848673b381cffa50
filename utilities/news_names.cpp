#include "utilities/news_names.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kCodeLength = 6;

bool IsNumeric(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string TwoDigits(int number)
{
    return std::string(LastChars("0" + Decimal(number % 100), 2));
}

/// A two-digit year with its century.
std::string yr(std::string_view two_digits)
{
    return std::string(NumericHead(two_digits) < 70 ? "20" : "19").append(two_digits);
}

/// A day without leading "0".
std::string da(std::string_view two_digits)
{
    if (two_digits.starts_with('0'))
        two_digits.remove_prefix(1);
    return std::string(two_digits);
}

/// The name of a month; empty when there is no such month.
std::string mo(std::string_view two_digits)
{
    const int month = NumericHead(two_digits);
    return std::string(month >= 1 && month <= 12 ? MonthName(month) : "");
}

/// The six digits of a date code; empty when there are none.
std::string_view DateCode(std::string_view file_name)
{
    if (!file_name.empty() && file_name.back() >= 'a' && file_name.back() <= 'w')
        file_name.remove_suffix(1);
    const std::string_view code = LastChars(file_name, kCodeLength);
    return code.size() == kCodeLength && IsNumeric(code) ? code : std::string_view{};
}

} // namespace

std::string DateOfName(std::string_view file_name)
{
    const std::string_view code = DateCode(file_name);
    if (code.empty())
        return {};
    return mo(code.substr(0, 2)) + " " + da(code.substr(2, 2)) + ", " + yr(code.substr(4, 2));
}

std::string PublicationOfName(std::string_view file_name, const NewsSettings& settings)
{
    const std::string_view code = DateCode(file_name);
    if (code.empty())
        return {};
    const auto prefix_length = static_cast<std::size_t>(code.data() - file_name.data());
    const std::string prefix = LowerCase(file_name.substr(0, prefix_length));
    for (const Publication& publication : settings.publications)
        if (LowerCase(publication.code) == prefix)
            return publication.name;
    return {};
}

std::string DateCodeOf(const DateTime& day)
{
    return TwoDigits(day.month) + TwoDigits(day.day) + TwoDigits(day.year);
}

} // namespace kiv
