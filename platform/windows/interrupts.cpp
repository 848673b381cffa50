#include "platform/interrupts.h"

#include "platform/stop_request.h"
#include "platform/windows/api.h"

#include <atomic>

namespace kiv {

namespace {

std::atomic<StopRequest*> asked = nullptr; // by the handler, which can be handed nothing

/// Runs in a thread of its own. FALSE: Windows ends the process.
BOOL WINAPI Ask(DWORD event)
{
    StopRequest* const stop = asked.load();
    if (stop == nullptr || stop->IsAsked() || (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT))
        return FALSE;
    stop->Ask();
    return TRUE;
}

} // namespace

Interrupts::Interrupts(StopRequest& stop)
{
    asked = &stop;
    ::SetConsoleCtrlHandler(Ask, TRUE);
}

Interrupts::~Interrupts()
{
    ::SetConsoleCtrlHandler(Ask, FALSE);
    asked = nullptr;
}

/// Windows starts a thread of its own for what asks.
struct SignalsHeldBack::Former {};

SignalsHeldBack::SignalsHeldBack() = default;

SignalsHeldBack::~SignalsHeldBack() = default;

} // namespace kiv
