#include "shell/output_roots.h"

#include "builder/build_state.h"
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"

namespace kiv {

namespace {

class SilentReporter : public Reporter {
  protected:
    void Show(std::string_view) override {}
    void Note(std::string_view, const Place&) override {}
};

class SilentProgress : public Progress {
  public:
    void Status(std::string_view) override {}
    void PassStatus(std::string_view) override {}
    void Step(int, int) override {}
    void dirbuttons() override {}
    void dirreset() override {}
};

} // namespace

std::vector<std::string> DeclaredOutputRoots(Machine& machine, const BlockMemory& blocks)
{
    SilentReporter reporter;
    SilentProgress progress;
    Machine quiet{
        machine.files, machine.native_paths, machine.clock, machine.clipboard, machine.programs,
        reporter,      machine.pictures,     progress};
    const BuildOptions options;
    BlockMemory block_memory = blocks;
    Build build(quiet, options, block_memory);
    ResetBuildState(build);
    try {
        ReadPageList(build);
        ParsePageList(build);
    } catch (const RunError&) {
        // The build has told of it; the roots declared before it stand.
    }
    std::vector<std::string> roots;
    for (const std::string& root :
         {build.state.OutputDir1, build.state.AspOutputDir, build.state.HtmOutputDir})
        if (!root.empty())
            roots.push_back(root);
    return roots;
}

} // namespace kiv
