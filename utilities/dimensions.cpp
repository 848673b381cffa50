#include "utilities/dimensions.h"

#include "text/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

namespace kiv {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// The number that a text begins with, as far as it is one: digits with at most one ".", then an
/// exponent. Empty when there is no digit.
std::string_view NumberText(std::string_view text)
{
    std::size_t at = 0;
    bool digits = false;
    bool point = false;
    for (; at < text.size() && (IsDigit(text[at]) || (text[at] == '.' && !point)); ++at)
        (text[at] == '.' ? point : digits) = true;
    if (!digits)
        return {};
    std::size_t exponent = at;
    if (exponent < text.size() && (text[exponent] == 'e' || text[exponent] == 'E'))
        ++exponent;
    if (exponent > at && exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+'))
        ++exponent;
    if (exponent == at || exponent == text.size() || !IsDigit(text[exponent]))
        return text.substr(0, at);
    while (exponent < text.size() && IsDigit(text[exponent]))
        ++exponent;
    return text.substr(0, exponent);
}

/// Whether a number that is no double is too small to be one, not too great.
bool IsTiny(std::string_view number)
{
    const std::string_view digits = number.substr(0, number.find_first_of("eE"));
    const std::string_view whole = Before(digits, '.');
    long long magnitude = 0; // the power of ten of the first digit that counts, about
    if (const std::size_t first = whole.find_first_not_of('0'); first != npos)
        magnitude = static_cast<long long>(whole.size() - first);
    else if (const std::size_t point = digits.find('.'); point != npos)
        magnitude = -static_cast<long long>(digits.find_first_not_of('0', point + 1) - point);
    const std::string_view exponent = number.substr(std::min(digits.size() + 1, number.size()));
    return magnitude + NumericHead(exponent) < 0;
}

[[noreturn]] void RefuseOverflow(std::string_view what)
{
    throw RunError(ErrorKind::overflow, std::string(what) + " is out of range", {},
                   "Give smaller numbers.");
}

/// A field by its leading numeric part; 0 when it begins with no number.
double ReadNumber(std::string_view field)
{
    std::string_view text = field;
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    text = NumberText(text);
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec == std::errc::result_out_of_range && IsTiny(text))
        number = 0;
    else if (read.ec == std::errc::result_out_of_range || !std::isfinite(number))
        RefuseOverflow("the number " + std::string(Trim(field)));
    return negative ? -number : number;
}

/// A number as plain decimal text: 15 significant digits, never an exponent, no zeros at the end.
std::string WriteNumber(double number)
{
    constexpr int kDigits = 15;
    std::array<char, 32> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(number),
                      std::chars_format::scientific, kDigits - 1); // d.dddddddddddddde±xx
    const std::string_view text(buffer.data(),
                                static_cast<std::size_t>(written.ptr - buffer.data()));
    std::string digits = std::string(text.substr(0, 1)).append(text.substr(2, kDigits - 1));
    digits.resize(std::max<std::size_t>(digits.find_last_not_of('0') + 1, 1));
    if (digits == "0")
        return digits;
    const int exponent = NumericHead(FromChar(text, kDigits + 3));
    if (exponent < 0)
        digits.insert(0, static_cast<std::size_t>(-exponent), '0');
    const auto whole = static_cast<std::size_t>(std::max(exponent, 0) + 1);
    if (digits.size() < whole)
        digits.append(whole - digits.size(), '0');
    else if (digits.size() > whole)
        digits.insert(whole, ".");
    return (number < 0 ? "-" : "") + digits;
}

/// side × factor ÷ divisor, in this order.
double InProportion(double side, double factor, double divisor)
{
    const double product = side * factor;
    if (!std::isfinite(product))
        RefuseOverflow("the product of the sides");
    if (divisor == 0)
        throw RunError(ErrorKind::division, "division by a starting side of 0", {},
                       "Give the starting width and height, both greater than 0.");
    const double quotient = product / divisor;
    if (!std::isfinite(quotient))
        RefuseOverflow("the new side");
    return quotient;
}

} // namespace

void Calculate(Dimensions& fields)
{
    const double start_width = ReadNumber(fields.start_width);
    const double start_height = ReadNumber(fields.start_height);
    const double new_width = ReadNumber(fields.new_width);
    const double new_height = ReadNumber(fields.new_height);
    if (new_width == 0)
        fields.new_width = WriteNumber(InProportion(new_height, start_width, start_height));
    else
        fields.new_height = WriteNumber(InProportion(new_width, start_height, start_width));
}

std::string_view RefusalText(const RunError& error)
{
    return error.kind == ErrorKind::division ? "Division by zero" : "Overflow";
}

} // namespace kiv
