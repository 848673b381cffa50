#include "cli/face.h"

#include "cli/shown_text.h"

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

void CliReporter::Show(std::string_view text)
{
    messages_.emplace_back(text);
    if (err_ == nullptr)
        return;
    terminal_line_.Clear();
    *err_ << "kiv: " << ShownText(text) << '\n' << std::flush;
}

} // namespace kiv
