// Marks of lists, codes and remarks that the build takes for text.
#pragma once

#include <string>
#include <vector>

namespace kiv {

struct SiteView;
struct SourceText;

/// A line of a page list, a template or an include of theirs that was meant for something else than
/// the text that it is.
struct MarkSlip {
    int line = 0;      // 1-based
    std::string words; // that are taken for text
    std::string todo;  // what to write instead
};

/// Those of a source, in the order of its lines.
std::vector<MarkSlip> MarkSlips(const SiteView& site, const SourceText& source);

} // namespace kiv
