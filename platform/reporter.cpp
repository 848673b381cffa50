#include "platform/reporter.h"

#include "platform/stop_request.h"

#include <utility>

namespace kiv {

void Reporter::reportmsg(std::string_view text, const Place& where, std::string_view hint)
{
    Keep({std::string(text), where, true, std::string(hint)});
    Show(text);
}

void Reporter::Withhold(std::string_view text, const Place& where, std::string_view hint)
{
    Keep({std::string(text), where, false, std::string(hint)});
}

void Reporter::Step(int done, int all)
{
    ShowStep(done, all);
    EndIfAsked();
}

void Reporter::Wait(int done, int all)
{
    ShowWait(done, all);
    EndIfAsked();
}

void Reporter::EndIfAsked() const
{
    if (stop_ != nullptr && stop_->IsAsked())
        throw Stopped();
}

void Reporter::Keep(Warning warning)
{
    warnings_.push_back(std::move(warning));
    Take(warnings_.back());
}

} // namespace kiv
