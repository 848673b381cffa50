#include "platform/programs.h"

namespace kiv {

void ProgramList::Start(const std::string& command_line, bool minimised)
{
    if (next_ != nullptr)
        next_->Start(command_line, minimised);
    launched_.push_back(command_line);
}

} // namespace kiv
