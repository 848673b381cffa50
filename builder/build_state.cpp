#include "builder/build_state.h"

#include "builder/text_helpers.h"
#include "text/text.h"

namespace kiv {

Build::Build(Machine& machine_used, const BuildOptions& build_options, BlockMemory& block_memory,
             OutputRoots& declared_roots)
    : machine(machine_used), options(build_options), blocks(block_memory), roots(declared_roots),
      uploads(machine_used.files, build_options.UploadCommand),
      messages(machine_used.reporter, machine_used.files, state.place),
      tracer(build_options.trace != nullptr ? std::make_unique<Tracer>(*build_options.trace, *this)
                                            : nullptr)
{
    const DateTime& start = options.program_start;
    pass.YearText = Decimal(start.year);
    pass.TodayText =
        std::string(MonthName(start.month)) + " " + Decimal(start.day) + ", " + pass.YearText;
}

void PageState::Begin(int page)
{
    number = page;
    redirects = false;
    file = {};
    for (std::string* const text :
         {&name, &CurrentOutputPath, &CurrentStem, &CurrentBaseStem, &CurrentTitle})
        text->clear();
    bangs = {};
}

std::string Build::CutToStem(PageRecord& page)
{
    const std::size_t size = page.file.size();
    std::string stem = FileStem(page.file);
    if (page.file.size() != size)
        state.page_list_is_valid = false;
    return stem;
}

void ResetBuildState(Build& build)
{
    build.messages.MessageLatch = false;
    build.state = BuildState();
    if (build.tracer)
        build.tracer->Reset();
}

} // namespace kiv
