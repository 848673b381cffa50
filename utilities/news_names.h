// What the file name of a news article says: its date and its publication.
#pragma once

#include "platform/clock.h"
#include "utilities/news_settings.h"

#include <string>
#include <string_view>

namespace kiv {

/// The parts of a date code: a two-digit year with its century, a day without leading "0", the name
/// of a month (empty when there is no such month).
std::string yr(std::string_view two_digits);
std::string da(std::string_view two_digits);
std::string mo(std::string_view two_digits);

/// The six digits "mmddyy" at the end of an article's file name or before one last letter "a" to
/// "w"; empty when there are none.
std::string_view DateCode(std::string_view file_name);

/// "April 5, 2004" for a file name with a date code; else empty.
std::string DateOfName(std::string_view file_name);

/// The publication whose code stands before the date code, in any case; empty when there is none.
std::string PublicationOfName(std::string_view file_name, const NewsSettings& settings);

/// The button "Today": a day as date code.
std::string DateCodeOf(const DateTime& day);

} // namespace kiv
