#include "builder/build_driver.h"

#include "builder/build_state.h"
#include "builder/missing_sources.h"
#include "builder/navigation_lists.h"
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"
#include "builder/page_writer.h"
#include "builder/template_reader.h"
#include "builder/traced_bounds.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "platform/stop_request.h"
#include "text/text.h"

#include <new>
#include <stdexcept>

namespace kiv {

namespace {

void RunPass(Build& build)
{
    ReadTemplate(build);
    ReadPageList(build);
    ParsePageList(build);
    if (build.tracer) [[unlikely]]
        TellBounds(build);
    WritePages(build);
}

/// One of the extra passes: what it sets holds until it ends, however it ends.
class ExtraPass {
  public:
    /// `flag` is the pass's own in the pass state; `name` goes to the pass status.
    ExtraPass(Build& build, bool& flag, std::string_view name)
        : reporter_(build.machine.reporter), flag_(flag)
    {
        flag_ = true;
        build.pass.OutputExtensionWord = "asp"; // in the pass for HTM, too
        reporter_.PassStatus(name);
    }
    ExtraPass(const ExtraPass&) = delete;
    ExtraPass& operator=(const ExtraPass&) = delete;
    ~ExtraPass()
    {
        flag_ = false;
        reporter_.PassStatus("");
    }

  private:
    Reporter& reporter_;
    bool& flag_;
};

void RunAspPass(Build& build)
{
    ResetBuildState(build);
    const ExtraPass pass(build, build.pass.AspPass, "ASP");
    RunPass(build);
}

/// Without a reset: what the pass before left stays where it is not written again.
void RunHtmPass(Build& build)
{
    const ExtraPass pass(build, build.pass.HtmPass, "HTM");
    RunPass(build);
}

/// All passes of one build; `as_single_page` writes every page into `_singlehtml.txt`.
void BuildPasses(Build& build, bool as_single_page)
{
    Machine& machine = build.machine;
    if (!HasSources(build))
        return;
    ResetBuildState(build);
    build.roots = {};
    build.pass.SinglePageMode = as_single_page;
    build.pass.ThisDirName = ThisDirNameOf(machine.files.CurrentDirectory());
    build.pass.OutputExtensionWord = "htm";
    RunPass(build);
    if (build.state.AspOutputWanted)
        RunAspPass(build);
    if (build.state.HtmOutputWanted)
        RunHtmPass(build);
    build.state.place = {};
    WriteNavigationFiles(build);
    machine.reporter.Status(Decimal(build.state.PageCount) + " files written");
}

/// The fatal error of a build that asked for more memory than there is, in the line in work.
RunError NoMemory(const Build& build)
{
    return {ErrorKind::memory, "there is not enough memory for what this line makes or reads",
            build.state.place,
            "Split what the line makes or reads into smaller pieces, or close other programs."};
}

/// The run for the single page, where there is one, and the ordinary one.
void BuildRuns(Build& build)
{
    try {
        if (build.machine.files.FileExists(kSinglePageFile))
            BuildPasses(build, true);
        BuildPasses(build, false);
    } catch (const std::bad_alloc&) {
        throw NoMemory(build);
    } catch (const std::length_error&) { // a text longer than any can be
        throw NoMemory(build);
    }
}

/// After a fatal error, which stays the one that is told.
void RemoveDoublesQuietly(UploadList& uploads)
{
    try {
        uploads.RemoveDoubles();
    } catch (const RunError&) {
    }
}

} // namespace

void BuildSite(Machine& machine, const BuildOptions& options, BlockMemory& blocks,
               OutputRoots& roots)
{
    Build build(machine, options, blocks, roots);
    try {
        BuildRuns(build);
    } catch (RunError& error) {
        if (!error.where.IsKnown())
            error.where = build.state.place;
        if (build.tracer)
            build.tracer->Fail(error.text);
        RemoveDoublesQuietly(build.uploads);
        throw;
    } catch (const Stopped&) {
        RemoveDoublesQuietly(build.uploads);
        throw;
    }
    build.uploads.RemoveDoubles();
}

} // namespace kiv
