// `_check.txt` beside the page list: findings that a site has switched off for good.
#pragma once

#include "inspect/finding.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct SiteView;

/// The finding that tells of lines which switch off nothing.
inline constexpr std::string_view kUnusedCheckLine = "check-list-unused";

/// A line that is understood: "NAME: reason" or "NAME TEXT: reason".
struct CheckLine {
    int line = 0; // 1-based
    std::string name;
    std::string text; // that the finding's file, page or text has to hold; "": all of the name
    bool is_used = false;
};

/// One that is not.
struct CheckLineFault {
    int line = 0; // 1-based; 0: the file as a whole
    std::string text;
    std::string suggestion;
};

/// What the file says; nothing where there is none. Reading it throws nothing.
struct CheckList {
    explicit CheckList(const SiteView& site);

    bool Names(std::string_view finding) const;
    /// Whether a line switches the finding off; all that do are used from then on.
    bool SwitchesOff(const Finding& finding);

    std::string path; // absolute drive path
    std::vector<CheckLine> lines;
    std::vector<CheckLineFault> faults;

  private:
    void Read(std::string_view bytes);
    void TakeLine(std::string_view line, int number);
};

} // namespace kiv
