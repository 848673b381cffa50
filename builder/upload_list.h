#pragma once

#include "platform/files.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace kiv {

/// The upload batch file, to which a build adds one command line for each file written.
class UploadList {
  public:
    /// `command` is a template that holds "@@" where the file name goes. One without it records
    /// nothing at all.
    UploadList(Files& files, std::string_view command) : files_(files), command_(command) {}

    /// Adds the line for a file unless the batch file holds it already.
    void RecordUpload(std::string_view file);

    /// To be called when the build has ended. When another build has written to the batch file
    /// meanwhile, both may have added a line before either saw the other's: of each line that this
    /// build has added one stays.
    void RemoveDoubles();

  private:
    void ReadAnew();

    Files& files_;
    std::string_view command_;
    std::unordered_set<std::string> lines_; // of the batch file in the state `seen_`
    FileStamp seen_;
    std::unordered_set<std::string> added_; // by this build
    bool is_shared_ = false;                // somebody else has added lines as well
};

} // namespace kiv
