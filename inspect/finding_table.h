// The table of findings: a row has a finding's name, how bad it is, what it means, and the function
// that looks for it. A family of findings has a file of its own.
#pragma once

#include "inspect/finding.h"
#include "inspect/site_view.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct FindingRow;

/// Takes what the function of a row finds.
class FindingSink {
  public:
    FindingSink(const FindingRow& row, std::vector<Finding>& found) : row_(row), found_(found) {}

    /// `text` is what is wrong, as a sentence would say it, without its full stop.
    void Add(const Place& where, std::string text, std::string suggestion = {});

  private:
    const FindingRow& row_;
    std::vector<Finding>& found_;
};

struct FindingRow {
    std::string_view name;
    Severity severity;
    std::string_view about; // what it means, in a line
    /// Null: what is left to say when all others have looked.
    void (*look)(const SiteView& site, FindingSink& sink);
};

/// Every finding there is.
std::span<const FindingRow> FindingRows();
/// Their names.
std::vector<std::string_view> FindingNames();

} // namespace kiv
