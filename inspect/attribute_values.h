// Values of attributes that have a form of their own. All texts are UTF-8 or Windows-1252 alike.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace kiv {

/// The addresses of "small.jpg 480w, large.jpg 800w".
std::vector<std::string_view> SourceSetAddresses(std::string_view value);

/// Where "5; url=next.htm" leads; "" when nowhere.
std::string_view RefreshAddress(std::string_view content);

/// The pixels of "120" or "120px"; none of "50%" and what else is no number of them.
std::optional<int> PixelsOf(std::string_view side);

/// Whether `word`, in small letters, is one of those that blanks part in `words`, whatever their
/// case.
bool HasWord(std::string_view words, std::string_view word);

} // namespace kiv
