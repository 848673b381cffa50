#include "builder/build_driver.h"

#include "builder/build_state.h"
#include "builder/navigation_lists.h"
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"
#include "builder/page_writer.h"
#include "builder/template_reader.h"
#include "builder/text_helpers.h"
#include "text/text.h"

namespace kiv {

namespace {

void RunPass(Build& build)
{
    ReadTemplate(build);
    ReadPageList(build);
    ParsePageList(build);
    WritePages(build);
}

void RunAspPass(Build& build)
{
    ResetBuildState(build);
    build.pass.AspPass = true;
    build.pass.OutputExtensionWord = "asp";
    build.machine.progress.PassStatus("ASP");
    RunPass(build);
    build.pass.AspPass = false;
    build.machine.progress.PassStatus("");
}

/// Without a reset: what the pass before left stays where it is not written again.
void RunHtmPass(Build& build)
{
    build.pass.HtmPass = true;
    build.pass.OutputExtensionWord = "asp"; // here too
    build.machine.progress.PassStatus("HTM");
    RunPass(build);
    build.pass.HtmPass = false;
    build.machine.progress.PassStatus("");
}

void BuildPasses(Build& build)
{
    Machine& machine = build.machine;
    if (!machine.files.FileExists("_template.txt") || !machine.files.FileExists("_html.txt")) {
        machine.reporter.reportmsg("OOPS! Missing _html.txt, _template.txt");
        return;
    }
    ResetBuildState(build);
    machine.progress.dirreset();
    build.pass.ThisDirName = ThisDirNameOf(machine.files.CurrentDirectory());
    build.pass.OutputExtensionWord = "htm";
    RunPass(build);
    if (build.state.AspOutputWanted)
        RunAspPass(build);
    if (build.state.HtmOutputWanted)
        RunHtmPass(build);
    machine.reporter.place = {};
    WriteNavigationFiles(build);
    machine.progress.Status(Decimal(build.state.PageCount) + " files written");
}

/// The reporter's place points into the build, so it ends with it; so do the pass texts of a build
/// that fails.
class BuildEnd {
  public:
    explicit BuildEnd(Machine& machine) : machine_(machine) {}
    BuildEnd(const BuildEnd&) = delete;
    BuildEnd& operator=(const BuildEnd&) = delete;
    ~BuildEnd() { machine_.reporter.place = {}; }

  private:
    Machine& machine_;
};

} // namespace

void BuildSite(Machine& machine, const BuildOptions& options, BlockMemory& blocks)
{
    Build build(machine, options, blocks);
    const BuildEnd end(machine);
    try {
        if (machine.files.FileExists("_singlehtml.txt")) {
            build.pass.SinglePageMode = true;
            BuildPasses(build);
            build.pass.SinglePageMode = false;
        }
        BuildPasses(build);
    } catch (RunError& error) {
        if (error.where.empty())
            error.where = machine.reporter.place.Text();
        machine.progress.PassStatus("");
        throw;
    }
}

} // namespace kiv
