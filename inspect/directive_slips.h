// Lines of the page list that nearly are directives, switches or definitions.
#pragma once

#include <string>
#include <vector>

namespace kiv {

struct SiteView;
struct SourceText;

/// A line that was meant for a directive and is not taken as one.
struct DirectiveSlip {
    int line = 0;      // 1-based
    std::string meant; // the line as it should be
};

/// Those of a source, in the order of its lines.
std::vector<DirectiveSlip> DirectiveSlips(const SiteView& site, const SourceText& source);

} // namespace kiv
