#include "shell/first_steps.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "shell/editors.h"
#include "shell/new_site.h"
#include "shell/workspace.h"

namespace kiv {

namespace {

/// A folder that cannot be looked into is none.
bool IsSite(Files& files, const std::string& folder)
{
    const std::string inside = WithSeparator(folder);
    try {
        return files.FileExists(inside + std::string(kPageListFile)) &&
               files.FileExists(inside + std::string(kTemplateFile));
    } catch (const RunError&) {
        return false;
    }
}

/// A copy of many files, each only where there is none.
class Copying {
  public:
    explicit Copying(Files& files) : files_(files) {}

    void CopyFile(const std::string& from, const std::string& to)
    {
        if (files_.NameIsTaken(to)) {
            ++kept_;
            return;
        }
        files_.WriteFile(to, files_.ReadFile(from));
        ++copied_;
    }

    /// With all that is below; both end in "\".
    void CopyFolder(const std::string& from, const std::string& to)
    {
        MakeFolders(files_, to.substr(0, to.size() - 1));
        for (const std::string& name : files_.ListFiles(from, "*.*"))
            CopyFile(from + name, to + name);
        for (const std::string& name : files_.ListFolders(from))
            CopyFolder(from + name + '\\', to + name + '\\');
    }

    std::string Told(const std::string& to) const
    {
        std::string told = std::to_string(copied_) + " files copied to " + to;
        if (kept_ > 0)
            told += "; " + std::to_string(kept_) + " were there already";
        return told;
    }

  private:
    Files& files_;
    int copied_ = 0;
    int kept_ = 0;
};

} // namespace

std::optional<FirstSteps> FirstStepsOf(Workspace& workspace)
{
    if (!workspace.FolderIsWanted)
        return std::nullopt;
    Files& files = workspace.machine().files;
    FirstSteps steps;
    if (IsSite(files, workspace.StartFolder))
        steps.start_site = workspace.StartFolder;
    steps.has_example = !workspace.ExampleFolder.empty();
    steps.editor_is_missing = EditorIsMissing(files);
    return steps;
}

void BeginSiteIn(Workspace& workspace, std::string_view folder)
{
    BeginSite(workspace.machine(), folder, {});
    workspace.switchto(folder);
}

void OpenExampleIn(Workspace& workspace, std::string_view folder)
{
    Files& files = workspace.machine().files;
    const std::string from = WithSeparator(workspace.ExampleFolder);
    const std::string to =
        WithSeparator(AbsolutePath(folder, files.CurrentDirectory())) + ThisDirNameOf(from) + '\\';
    Copying copying(files);
    copying.CopyFolder(from, to);
    // Its pages ask questions, and the build takes the script for them from here.
    const std::string script(kQuizScriptFile);
    MakeFolders(files, std::string(FolderOf(script)));
    copying.CopyFile(from + "utils\\quiz.txt", script);
    workspace.switchto(to + "site");
    workspace.machine().reporter.Status(copying.Told(to));
}

} // namespace kiv
