// Begins a site: the files that one starts with, and what each further section needs. Nothing that
// is there is ever touched; where a list that is there lacks a line, the line is told.
#pragma once

#include "platform/machine.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What is wanted besides the site itself.
struct NewSite {
    bool has_news = false;
    std::string section = {}; // the folder of a further section; empty: none
};

/// A line that a file which was there already lacks.
struct MissingLine {
    std::string file; // absolute drive path
    std::string line;
    std::string_view what_to_do; // a sentence
};

/// What became of it. Paths are absolute drive paths.
struct BegunSite {
    std::vector<std::string> made; // files, in the order of their writing
    std::vector<std::string> kept; // files that were there already
    std::vector<MissingLine> missing_lines;
    bool has_group = false;
    std::vector<std::string> build_first; // sections (folders) whose site maps a page shows already
    std::size_t news_site = 0; // the number of the news in the composer's list, from 1; 0: no news
    bool lacks_news_site = false; // the list has not yet the line of that number
};

/// What is wrong with the name of a section's folder, as a sentence; "" when it is well.
std::string SectionNameFault(std::string_view name);

/// Makes what is wanted in a folder, which is made when it is missing, and tells the reporter: the
/// status, what was there already, which lines are missing. A folder that has a page list and a
/// template is a site already and gets only what its sections need. Throws RunError of kind
/// `invalid-argument` for a section's name that is not well, and when a path cannot stand in the
/// composer's list; then nothing was made. Throws RunError of kind `file` for what cannot be
/// written; the status has said by then how far it came, and the same call goes on from there.
BegunSite BeginSite(Machine& machine, std::string_view folder, const NewSite& wanted);

} // namespace kiv
