// Days and times as files for the web have them, all in UTC.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// Seconds since the beginning of 1970, UTC.
using WebTime = std::int64_t;

/// "March 5, 2004", as the news have it, as the first second of that day; nothing for any other
/// text.
std::optional<WebTime> TimeOfNewsDate(std::string_view date);

/// "2004-03-05T14:07:09Z".
std::string IsoTime(WebTime time);
/// "Fri, 05 Mar 2004 14:07:09 +0000".
std::string MailTime(WebTime time);

} // namespace kiv
