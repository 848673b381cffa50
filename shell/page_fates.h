// What became of each page in the last build of its section, as long as a face is open.
#pragma once

#include "platform/files.h"
#include "platform/reporter.h"
#include "shell/built_section.h"
#include "shell/site_pages.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace kiv {

/// What a command that built tells of its pages.
struct BuildTale {
    std::vector<BuiltSection> sections;
    std::vector<WrittenFile> written;
    std::vector<Warning> warnings;
    std::string error; // that ended it; "": none
};

class PageFates {
  public:
    /// `site`: the pages as they were built. Sections that were not built keep what was known.
    void Take(const BuildTale& tale, const SitePages& site);
    /// Gives each page what is known of it.
    void AddTo(SitePages& site) const;

  private:
    struct Fate {
        PageFate fate = PageFate::unknown;
        std::string reason;
        int warnings = 0;
    };
    void TakeSection(const BuiltSection& built, const BuildTale& tale, const SiteSection& section);

    std::map<std::string, Fate> fates_; // by upper-cased path and the page's file
};

} // namespace kiv
