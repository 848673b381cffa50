// What the file name of a news article says: its date and its publication.
#pragma once

#include "platform/clock.h"
#include "utilities/news_settings.h"

#include <string>
#include <string_view>

namespace kiv {

/// "April 5, 2004" for the file name of an article with a date code: six digits "mmddyy" at its
/// end, or before one last letter "a" to "w". Empty when there is none; a number that is no month
/// gives no month's name.
std::string DateOfName(std::string_view file_name);

/// The publication whose code stands before the date code, in any case; empty when there is none.
std::string PublicationOfName(std::string_view file_name, const NewsSettings& settings);

/// The button "Today": a day as date code.
std::string DateCodeOf(const DateTime& day);

} // namespace kiv
