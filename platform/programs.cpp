#include "platform/programs.h"

namespace kiv {

void ProgramList::Start(const Launch& launch)
{
    if (next_ != nullptr)
        next_->Start(launch);
    launched_.push_back(launch.Text());
}

} // namespace kiv
