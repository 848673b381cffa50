// The workspace: what the main window holds and every command works on, without a window.
#pragma once

#include "builder/build_driver.h"
#include "platform/machine.h"
#include "shell/list_files.h"

#include <string>
#include <string_view>

namespace kiv {

class Workspace {
  public:
    explicit Workspace(Machine& machine) : machine_(machine) {}

    /// Reads the editor command, the upload list and the addresses, then makes `directory` the working directory.
    /// Throws RunError: `file` when it does not exist, `subscript` for a list past its bound.
    void StartUp(std::string_view directory);

    /// Makes a folder the working directory and works out its group and upload state.
    void switchto(std::string_view path);

    /// Builds the working directory.
    void BuildWorkDir();
    /// Builds the working directory and every folder of its group list, with the New Year switch on. Throws `subscript`
    /// past 500 entries, `file` for a folder that is missing.
    void BuildGroup();
    /// Merges the site maps of the working directory and its group into "_sitemap-master.txt" and opens it in the
    /// editor. Does nothing without a group list. Throws `file` when a site map is missing.
    void AssembleSiteMap();

    Machine& machine() { return machine_; }

    std::string WorkDir; // ends in "\"
    bool EoyEnabled = false;
    bool UploadListWanted = false;
    std::string UploadCommand;
    std::string EditorCommand;
    bool IsGroup = false; // the working directory has a group list

  private:
    void ChangeDirectory(std::string_view path);
    void checkgroup();
    void checkftpgroup();
    void groupbuild();
    void sitemapmaster();
    std::vector<std::string> GroupEntries() const;

    Machine& machine_;
    UploadEntries upload_entries_{"upload entry"};
    int upload_count_ = 0;
    Addresses addresses_;
    BlockMemory block_memory_;
};

} // namespace kiv
