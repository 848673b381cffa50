#include "platform/interrupts.h"

#include "platform/stop_request.h"

#include <atomic>
#include <csignal>

namespace kiv {

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<StopRequest*> asked = nullptr; // by the handler, which can be handed nothing

void Ask(int /*signal*/)
{
    if (StopRequest* const stop = asked.load())
        stop->Ask();
}

void Handle(int signal, void (*handler)(int), int flags)
{
    struct sigaction old {};
    if (::sigaction(signal, nullptr, &old) != 0 || old.sa_handler == SIG_IGN)
        return;
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

} // namespace

Interrupts::Interrupts(StopRequest& stop)
{
    asked = &stop;
    // The handler is good for one time. Calls that it breaks into go on.
    for (const int signal : kSignals)
        Handle(signal, Ask, static_cast<int>(SA_RESETHAND) | SA_RESTART);
}

Interrupts::~Interrupts()
{
    for (const int signal : kSignals)
        Handle(signal, SIG_DFL, 0);
    asked = nullptr;
}

struct SignalsHeldBack::Former {
    sigset_t mask;
};

SignalsHeldBack::SignalsHeldBack() : former_(std::make_unique<Former>())
{
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &former_->mask);
}

SignalsHeldBack::~SignalsHeldBack()
{
    ::pthread_sigmask(SIG_SETMASK, &former_->mask, nullptr);
}

} // namespace kiv
