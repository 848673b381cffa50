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
    /// `show` shows a message, with the place that it is about, and waits for the user.
    WindowReporter(std::function<void(std::string_view, const KeptPlace&)> show, StatusArea& status)
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
        const Warning& told = Warnings().back();
        std::string words(text);
        if (!told.hint.empty())
            words.append("\r\n").append(told.hint);
        show_(words, told.where);
    }

  private:
    std::function<void(std::string_view, const KeptPlace&)> show_;
    StatusArea& status_;
};

} // namespace kiv
