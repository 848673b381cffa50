#include "shell/builds.h"

#include "builder/build_driver.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "platform/unwritten_files.h"
#include "shell/groups.h"
#include "shell/workspace.h"

#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kMaxGroupEntries = 500;

/// Does `work` and after it, even when it fails, `restore`. When both fail, the error of `work` is
/// the one to tell.
void DoAndRestore(const std::function<void()>& work, const std::function<void()>& restore)
{
    try {
        work();
    } catch (...) {
        const std::exception_ptr error = std::current_exception();
        try {
            restore();
        } catch (const RunError&) {
            // Most likely the same folder is gone that `work` has already missed.
        }
        std::rethrow_exception(error);
    }
    restore();
}

void SetNewYear(Workspace& workspace, bool on)
{
    workspace.EoyEnabled = on;
    workspace.showdir();
}

/// Notes what the build of a section writes and says, however it ends.
class SectionRecord {
  public:
    explicit SectionRecord(Workspace& workspace)
        : workspace_(workspace), files_(workspace.machine().files)
    {
        built_.folder = WithSeparator(AbsolutePath(".", files_.CurrentDirectory()));
        built_.written.from = files_.Written().size();
        built_.warnings.from = workspace.machine().reporter.Warnings().size();
    }
    SectionRecord(const SectionRecord&) = delete;
    SectionRecord& operator=(const SectionRecord&) = delete;
    ~SectionRecord()
    {
        built_.written.to = files_.Written().size();
        built_.warnings.to = workspace_.machine().reporter.Warnings().size();
        if (workspace_.Built)
            workspace_.Built->push_back(std::move(built_));
    }
    void IsWhole() { built_.is_whole = true; }

  private:
    Workspace& workspace_;
    Files& files_;
    BuiltSection built_;
};

void BuildCurrent(Workspace& workspace, const Addresses& addresses)
{
    const BuildOptions options{.EoyEnabled = workspace.EoyEnabled,
                               .UploadListWanted = workspace.UploadListWanted,
                               .UploadCommand = workspace.UploadCommand,
                               .addresses = addresses,
                               .program_start = workspace.ProgramStart()};
    SectionRecord record(workspace);
    BuildSite(workspace.machine(), options, workspace.memory.blocks, workspace.Roots);
    record.IsWhole();
}

void groupbuild(Workspace& workspace, const AroundMember& around)
{
    Files& files = workspace.machine().files;
    if (!files.FileExists(kGroupFile))
        return;
    const Addresses addresses = LoadAddresses(files);
    const std::vector<std::string> entries = GroupEntries(files);
    if (entries.size() > kMaxGroupEntries)
        throw RunError(ErrorKind::subscript, "more than 500 group entries",
                       {AbsolutePath(kGroupFile, files.CurrentDirectory())},
                       "A group has room for 500 folders: make two groups of it.");
    const std::string saved = workspace.WorkDir;
    const std::function<void()> build = [&] { BuildCurrent(workspace, addresses); };
    const auto build_all = [&] {
        if (files.FileExists(kPageListFile) && files.FileExists(kTemplateFile))
            around(build);
        for (const std::string& entry : entries) {
            workspace.GoTo(saved + entry); // as written: no "\" is put behind it here
            around(build);
        }
    };
    DoAndRestore(build_all, [&] { workspace.GoTo(saved); });
}

} // namespace

void BuildWorkDir(Workspace& workspace)
{
    workspace.Built.emplace();
    BuildCurrent(workspace, LoadAddresses(workspace.machine().files));
}

void BuildUnwritten(Workspace& workspace, UnwrittenFiles& files, Reporter& reporter, Trace& trace,
                    OutputRoots& roots)
{
    Machine& real = workspace.machine();
    Machine machine{files,         real.native_paths, real.clock,   real.clipboard,
                    real.programs, reporter,          real.pictures};
    const BuildOptions options{.EoyEnabled = workspace.EoyEnabled,
                               .UploadCommand = {},
                               .addresses = LoadAddresses(files),
                               .program_start = workspace.ProgramStart(),
                               .trace = &trace};
    BlockMemory blocks = workspace.memory.blocks;
    BuildSite(machine, options, blocks, roots);
}

void BuildUnwritten(Workspace& workspace, UnwrittenFiles& files, Reporter& reporter, Trace& trace)
{
    OutputRoots roots;
    BuildUnwritten(workspace, files, reporter, trace, roots);
}

void BuildGroup(Workspace& workspace)
{
    BuildGroup(workspace, [](const std::function<void()>& build) { build(); });
}

void BuildGroup(Workspace& workspace, const AroundMember& around)
{
    workspace.Built.emplace();
    SetNewYear(workspace, true);
    DoAndRestore([&] { groupbuild(workspace, around); }, [&] { SetNewYear(workspace, false); });
}

void ToggleNewYear(Workspace& workspace)
{
    SetNewYear(workspace, !workspace.EoyEnabled);
}

std::string_view NewYearText(const Workspace& workspace)
{
    return workspace.EoyEnabled ? "EOY ON!" : "";
}

} // namespace kiv
