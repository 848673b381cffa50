#include "exchange/trial_build.h"

#include "builder/build_driver.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/silent_reporter.h"

namespace kiv {

namespace {

/// Goes into a folder, and back when it ends.
class Stay {
  public:
    Stay(Files& files, const std::string& folder) : files_(files), back_(files.CurrentDirectory())
    {
        files.ChangeDirectory(folder);
    }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;
    ~Stay()
    {
        try {
            files_.ChangeDirectory(back_);
        } catch (const RunError&) { // it is gone: then there is no way back
        }
    }

  private:
    Files& files_;
    std::string back_;
};

} // namespace

Trial BuildTrial(Machine& machine, UnwrittenFiles& files, const std::string& folder,
                 const SourceTexts& texts)
{
    const Stay stay(files, folder);
    SilentReporter reporter;
    Machine trial_machine{
        files,    machine.native_paths, machine.clock, machine.clipboard, machine.programs,
        reporter, machine.pictures};
    for (const auto& [name, text] : texts) {
        const std::string path = AbsolutePath(name, folder);
        files.MakeFolder(FolderOf(path));
        files.WriteFile(path, text);
    }
    Trial trial;
    BlockMemory blocks;
    OutputRoots roots;
    try {
        BuildSite(trial_machine,
                  {.UploadCommand = {}, .addresses = {}, .program_start = machine.clock.Now()},
                  blocks, roots);
    } catch (const RunError& error) {
        trial.fault = error.text;
        trial.fault_page = error.where.page;
    }
    for (const Warning& warning : reporter.Warnings())
        trial.warned.insert(warning.where.page);
    return trial;
}

} // namespace kiv
