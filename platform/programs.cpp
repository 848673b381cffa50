#include "platform/programs.h"

#include "platform/file_marks.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// What stands behind the first word of a command. Which words are the program's is told for sure
/// only by the files that are there, and those are not asked for the sake of a report.
std::string_view BehindFirstWord(std::string_view command)
{
    const std::size_t begin = std::min(command.find_first_not_of(' '), command.size());
    const bool is_quoted = command.substr(begin).starts_with('"');
    const std::size_t end = command.find(is_quoted ? '"' : ' ', begin + 1);
    return end == npos ? std::string_view() : command.substr(end);
}

} // namespace

bool Launch::HasMarks() const
{
    return line > 0 && MarksIn(BehindFirstWord(command)).Any();
}

bool Launch::HasFileMark() const
{
    return line > 0 && MarksIn(BehindFirstWord(command)).file;
}

std::string Launch::Text() const
{
    if (!HasMarks())
        return command + file + options;
    const std::string_view arguments = BehindFirstWord(command);
    const std::string program = command.substr(0, command.size() - arguments.size());
    if (HasFileMark())
        return std::string(Trim(program + FillMarks(arguments, file, line))) + options;
    return program + FillMarks(arguments, file, line) + file + options;
}

void ProgramList::Start(const Launch& launch)
{
    if (next_ != nullptr)
        next_->Start(launch);
    launched_.push_back(launch.Text());
}

int ProgramList::Run(const Launch& launch, std::string_view input,
                     const WhileRunning& while_running)
{
    launched_.push_back(launch.Text());
    return next_ == nullptr ? 0 : next_->Run(launch, input, while_running);
}

bool ProgramList::Finds(std::string_view command)
{
    return next_ != nullptr && next_->Finds(command);
}

} // namespace kiv
