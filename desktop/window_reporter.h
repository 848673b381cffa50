// The reporter of the windows: boxes for messages, and a list of the warnings.
#pragma once

#include "platform/reporter.h"

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

class WindowReporter : public Reporter {
  public:
    /// `show` shows a message and waits for the user.
    explicit WindowReporter(std::function<void(std::string_view)> show) : show_(std::move(show)) {}

    /// Those of the last command, in the order noted.
    const std::vector<Warning>& Warnings() const { return warnings_; }
    void Clear() { warnings_.clear(); }

  protected:
    void Show(std::string_view text) override
    {
        warnings_.back().was_shown = true; // a message is noted before it is shown
        show_(text);
    }
    void Note(std::string_view text, const Place& where) override
    {
        warnings_.emplace_back(text, where);
    }

  private:
    std::function<void(std::string_view)> show_;
    std::vector<Warning> warnings_;
};

} // namespace kiv
