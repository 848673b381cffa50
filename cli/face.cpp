#include "cli/face.h"

#include <ostream>

namespace kiv {

namespace {

using std::chrono::milliseconds;

/// Short commands show nothing; longer ones are told often enough to look alive.
constexpr milliseconds kFirst{300};
constexpr milliseconds kEvery{50};

} // namespace

TerminalLine::TerminalLine(std::ostream* terminal, Instant (*now)())
    : terminal_(terminal), now_(now), next_(now() + kFirst)
{
}

void TerminalLine::Show(int done, int all)
{
    if (terminal_ == nullptr)
        return;
    const Instant now = now_();
    if (now < next_)
        return;
    next_ = now + kEvery;
    is_shown_ = true;
    *terminal_ << '\r' << done << " of " << all << "\x1b[K" << std::flush;
}

void TerminalLine::Clear()
{
    if (is_shown_)
        *terminal_ << "\r\x1b[K" << std::flush;
    is_shown_ = false;
}

void CliReporter::Take(const Warning& warning)
{
    if (printer_ == nullptr)
        return;
    terminal_line_.Clear();
    printer_->Print(warning);
}

} // namespace kiv
