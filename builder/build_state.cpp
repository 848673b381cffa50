#include "builder/build_state.h"

#include "platform/drive_path.h"
#include "text/text.h"

#include <utility>

namespace kiv {

Build::Build(Machine& machine_used, const BuildOptions& build_options, BlockMemory& block_memory)
    : machine(machine_used), options(build_options), blocks(block_memory),
      messages(machine_used.reporter), uploads(machine_used.files, build_options.UploadCommand)
{
    const DateTime& start = options.program_start;
    pass.YearText = Decimal(start.year);
    pass.TodayText =
        std::string(MonthName(start.month)) + " " + Decimal(start.day) + ", " + pass.YearText;
}

std::string_view Build::Keep(std::string text)
{
    return state.texts.emplace_back(std::move(text));
}

std::string_view Build::ReadSource(std::string_view path, const std::string*& name)
{
    const Files& files = machine.files;
    name = &state.source_names.emplace_back(AbsolutePath(path, files.CurrentDirectory()));
    return Keep(machine.files.ReadFile(path));
}

void ResetBuildState(Build& build)
{
    build.machine.reporter.place = {};
    build.messages.MessageLatch = false;
    build.state = BuildState();
}

} // namespace kiv
