// Answers that are text, with the fields that all of them have.
#pragma once

#include "preview/http_message.h"

#include <string>
#include <string_view>

namespace kiv {

HttpAnswer TextAnswer(int status, std::string_view type, std::string body);

/// A refusal in words, as far as there are some for its code.
HttpAnswer RefusalAnswer(int status);

/// Why a file that is there is not sent.
HttpAnswer FaultAnswer(NativeFault fault);

} // namespace kiv
