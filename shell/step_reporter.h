// A reporter for a build in memory: its words are kept, how far it is goes to the face, where the
// command may end.
#pragma once

#include "platform/silent_reporter.h"

namespace kiv {

class StepReporter : public SilentReporter {
  public:
    /// `face` is the command's own reporter, and outlives this.
    explicit StepReporter(Reporter& face) : face_(face) {}

    /// A place between two pages when no build counts them any more. Throws Stopped.
    void Pause() { face_.Step(done_, all_); }

  protected:
    void ShowStep(int done, int all) override
    {
        done_ = done;
        all_ = all;
        Pause();
    }

  private:
    Reporter& face_;
    int done_ = 0;
    int all_ = 0;
};

} // namespace kiv
