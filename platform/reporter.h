// What a running command tells: messages, warnings, how far it is. The window shows boxes and a
// status line, the command line prints, a test collects.
#pragma once

#include "platform/place.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class StopRequest;

/// One warning of a run.
struct Warning {
    std::string text;
    KeptPlace where;
    bool was_shown = false;
    std::string hint = {}; // what can be done, in whole sentences; "": nothing
};

/// Keeps the warnings of a run; a face derives from it and shows them.
class Reporter {
  public:
    Reporter() = default;
    Reporter(const Reporter&) = delete;
    Reporter& operator=(const Reporter&) = delete;
    virtual ~Reporter() = default;

    /// Keeps one message as a warning and shows it to the user. `hint` says what can be done.
    void reportmsg(std::string_view text, const Place& where = {}, std::string_view hint = {});
    /// Keeps a warning that is not shown.
    void Withhold(std::string_view text, const Place& where = {}, std::string_view hint = {});

    /// In the order in which they came.
    const std::vector<Warning>& Warnings() const { return warnings_; }
    void ForgetWarnings() { warnings_.clear(); }

    /// The status line.
    virtual void Status(std::string_view /*text*/) {}
    /// The second status text, which names the pass: "ASP", "HTM" or empty.
    virtual void PassStatus(std::string_view /*text*/) {}
    /// Step `done` of `all` is behind us: a file is finished, and the next one not begun. Throws
    /// Stopped when that was asked for.
    void Step(int done, int all);
    /// Step `done` of `all` is behind us, and another program has the next one in work: a face
    /// stays alive. 0 of 0: it has all of them. Throws Stopped when the end was asked for.
    void Wait(int done, int all);
    /// From now on commands end between two files when `stop` is asked to; null: they do not. It
    /// outlives that.
    void StopWhen(const StopRequest* stop) { stop_ = stop; }

  protected:
    virtual void ShowStep(int /*done*/, int /*all*/) {}
    virtual void ShowWait(int /*done*/, int /*all*/) {}
    /// Shows a message, which is the last of the warnings by then.
    virtual void Show(std::string_view text) = 0;
    /// Takes each warning when it comes, for a face that tells also those that are not shown.
    virtual void Take(const Warning& /*warning*/) {}

  private:
    void Keep(Warning warning);
    void EndIfAsked() const;

    std::vector<Warning> warnings_;
    const StopRequest* stop_ = nullptr;
};

} // namespace kiv
