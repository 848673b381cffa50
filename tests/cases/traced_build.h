// A build that is traced and written nowhere, beside the real one of a case.
#pragma once

#include "tests/cases/case_file.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace kiv::test {

/// Builds the site of a case before the real build does. What it finds wrong it says in words: a
/// file of the disk that has changed, a line of a page whose story does not lead to it, a source
/// line that nothing is told of.
class TracedBuild {
  public:
    enum class What { section, group };

    /// `drive_c`: the case's own. Only calls of "build" and "group" are traced.
    TracedBuild(const Case& one, const std::filesystem::path& drive_c);
    /// A section, a drive path, or the group whose list it holds.
    TracedBuild(const std::string& section, What what, const std::filesystem::path& drive_c);
    ~TracedBuild();

    /// What is wrong, also beside what the real build said and wrote; "" when nothing is. `files`
    /// are the drive paths of what it wrote.
    std::string Differences(const std::vector<std::string>& messages,
                            const std::vector<std::string>& files) const;

  private:
    class Run;
    std::unique_ptr<Run> run_; // null: there is nothing to trace
};

} // namespace kiv::test
