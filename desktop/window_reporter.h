// The reporter of the windows: boxes for messages, the status area for how far a command is.
#pragma once

#include "desktop/status_area.h"
#include "platform/reporter.h"

#include <functional>
#include <string_view>
#include <utility>

namespace kiv {

class WindowReporter : public Reporter {
  public:
    /// `show` shows a message and waits for the user.
    WindowReporter(std::function<void(std::string_view)> show, StatusArea& status)
        : show_(std::move(show)), status_(status)
    {
    }

    void Status(std::string_view text) override { status_.Status(text); }
    void PassStatus(std::string_view text) override { status_.PassStatus(text); }

  protected:
    void ShowStep(int done, int all) override { status_.Step(done, all); }
    void ShowWait(int done, int all) override { status_.Wait(done, all); }
    void Show(std::string_view text) override
    {
        const std::string& hint = Warnings().back().hint;
        show_(hint.empty() ? std::string(text) : std::string(text).append("\r\n").append(hint));
    }

  private:
    std::function<void(std::string_view)> show_;
    StatusArea& status_;
};

} // namespace kiv
