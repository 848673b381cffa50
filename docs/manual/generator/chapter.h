// Chapters of the manual: prose and examples in one file. The examples are cases (see
// tests/cases/README.md), so what a chapter shows is what the tests run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::manual {

/// One "#:word rest" line of an example and the lines below it, as they are written.
struct Section {
    std::string word;
    std::string rest;
    std::vector<std::string> lines;
};

struct Example {
    std::string title;
    int line = 0; // of its "#:case", 1-based
    std::vector<Section> sections;
};

/// A stretch of a chapter: prose, or an example.
struct Block {
    std::vector<std::string> prose;
    std::vector<Example> example; // none or one
};

/// Cuts a chapter's text. Prose stands before the first "#:case" and below each "#:note".
std::vector<Block> ReadChapter(std::string_view text);

} // namespace kiv::manual
