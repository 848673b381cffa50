#include "shell/command_status.h"

#include "text/joined_text.h"

namespace kiv {

std::string FailedStatus(const RunError& error)
{
    return "Failed: " + error.text;
}

std::string StoppingStatus(bool closes)
{
    return closes ? "Closing as soon as the file in work is finished"
                  : "Stopping as soon as the file in work is finished";
}

std::string StoppedStatus(int done, int all)
{
    if (all == 0)
        return "Stopped";
    return Joined({"Stopped after ", std::to_string(done), " of ", std::to_string(all), " files"});
}

} // namespace kiv
