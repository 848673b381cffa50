#include "builder/page_listing.h"

#include "builder/build_state.h"
#include "builder/output_path.h"
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"
#include "builder/text_helpers.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "text/text.h"

#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kTitle = "@TITLE";

/// The page's own title, as its text has it; the record's may be another one, for the lists.
std::string_view TitleOf(const BuildState& state, int number)
{
    const std::string_view second = state.PageLines[number][2].text;
    return StartsWithNoCase(second, kTitle) ? FromChar(second, 10)
                                            : std::string_view(state.PageTable[number].title);
}

ListedPage Listed(Build& build, int number)
{
    const BuildState& state = build.state;
    const PageRecord& record = state.PageTable[number];
    const SourceLine& start = state.PageLines[number][1];
    ListedPage page{number,
                    record.file,
                    std::string(TitleOf(state, number)),
                    {},
                    Place{start.file, start.line, {}}};
    ExpandTitleVariables(page.title, state.NumberedVariables[Family::at]);
    page.path = AbsolutePath(OutputPath(FromChar(start.text, 9), state, build.pass),
                             build.machine.files.CurrentDirectory());
    return page;
}

} // namespace

std::vector<ListedPage> ListPages(Machine& machine, const BuildOptions& options,
                                  BlockMemory& blocks)
{
    OutputRoots roots;
    Build build(machine, options, blocks, roots);
    ResetBuildState(build);
    build.pass.ThisDirName = ThisDirNameOf(machine.files.CurrentDirectory());
    try {
        ReadPageList(build);
        ParsePageList(build);
    } catch (RunError& error) {
        if (!error.where.IsKnown())
            error.where = build.state.place;
        throw;
    }
    std::vector<ListedPage> pages;
    for (int number = 1; number <= build.state.PageCount; ++number)
        pages.push_back(Listed(build, number));
    return pages;
}

} // namespace kiv
