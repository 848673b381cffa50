// Lines of the page list that nearly are directives, switches or definitions.
#pragma once

#include <string>
#include <vector>

namespace kiv {

struct SiteView;
struct SourceText;

/// A line that was meant for a directive and is not taken as one, or not with all of its value.
struct DirectiveSlip {
    int line = 0;          // 1-based
    std::string meant;     // the line as it should be; "": nobody can know
    bool is_cut = false;   // it is taken, but its value begins behind a blank that is not there
    std::string todo = {}; // where nothing is known to be meant
};

/// Those of a source, in the order of its lines.
std::vector<DirectiveSlip> DirectiveSlips(const SiteView& site, const SourceText& source);

} // namespace kiv
