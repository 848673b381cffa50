// A reporter that keeps what it was told, and the fatal error of a call.
#pragma once

#include "builder/build_messages.h"
#include "platform/run_error.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class MessageRecorder : public Reporter {
  public:
    std::vector<std::string> shown;
    std::vector<std::string> noted; // shown or kept back

  protected:
    void Show(std::string_view text) override { shown.emplace_back(text); }
    void Note(std::string_view text, const Place&) override { noted.emplace_back(text); }
};

/// Runs `call` and gives the fatal error that it threw, if any.
template <typename Call>
std::optional<RunError> FatalError(Call call)
{
    try {
        call();
    } catch (const RunError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace kiv
