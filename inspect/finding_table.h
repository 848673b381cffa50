// The table of findings: a row has a finding's name, how bad it is, what it means, and the function
// that looks for it. A family of findings has a file of its own.
#pragma once

#include "inspect/finding.h"
#include "inspect/site_view.h"

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace kiv {

struct FindingRow;

/// Takes what the function of a row finds.
class FindingSink {
  public:
    explicit FindingSink(const FindingRow& row) : row_(row) {}

    /// `text` is what is wrong, as a sentence would say it, without its full stop. What a source
    /// line does to many pages is one finding, with the first of them.
    void Add(const Place& where, std::string text, std::string suggestion = {});

    /// What was found. The text says how many pages it is seen on, where they are several.
    std::vector<Finding> Take();

  private:
    struct Seen {
        std::size_t index = 0; // of the finding
        std::size_t pages = 1;
        std::string last_page;
    };

    const FindingRow& row_;
    std::vector<Finding> found_;
    std::map<std::tuple<std::string, std::string, int>, Seen> seen_; // by text, file and line
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
