// What a value on the command line may look like.
#pragma once

#include "cli/call_table.h"
#include "platform/clock.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// The exact form YYYY-MM-DDTHH:MM:SS, of a day and a time that there are.
std::optional<DateTime> ParseDateTime(std::string_view text);

/// A whole number in decimal digits; 0 for a negative one, and at most 1000000. Nothing for any
/// other text.
std::optional<std::size_t> ParseNumber(std::string_view text);

/// What is wrong with a value, as a sentence for the user; "" when it is well.
std::string ValueFault(const OptionRow& row, const std::string& value);

} // namespace kiv
