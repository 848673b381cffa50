// Ctrl+C, as a wish that the program looks at when it suits.
#pragma once

#include <memory>

namespace kiv {

class StopRequest;

/// While it lives, Ctrl+C and what else asks the process to end (SIGINT, SIGTERM, SIGHUP) ask
/// `stop` once; the second time they end the process as ever. What the process was started to
/// ignore stays ignored. There is one at a time, and `stop` outlives it.
class Interrupts {
  public:
    explicit Interrupts(StopRequest& stop);
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;
    ~Interrupts();
};

/// Threads that are started while it lives are never interrupted by what asks the process to end,
/// nor by any other signal: these are for the thread that starts them.
class SignalsHeldBack {
  public:
    SignalsHeldBack();
    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;
    ~SignalsHeldBack();

  private:
    struct Former; // what the starting thread had
    std::unique_ptr<Former> former_;
};

} // namespace kiv
