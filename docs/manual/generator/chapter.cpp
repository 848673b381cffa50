#include "docs/manual/generator/chapter.h"

#include "text/text.h"

namespace kiv::manual {

namespace {

Section SectionOf(std::string_view line)
{
    const std::size_t blank = line.find(' ');
    return {std::string(line.substr(2, blank - 2)),
            std::string(blank == npos ? std::string_view{} : line.substr(blank + 1)),
            {}};
}

/// The prose that lines go to: that of the last block, or of a new one behind an example.
std::vector<std::string>& Prose(std::vector<Block>& blocks)
{
    if (blocks.empty() || !blocks.back().example.empty())
        blocks.emplace_back();
    return blocks.back().prose;
}

} // namespace

std::vector<Block> ReadChapter(std::string_view text)
{
    std::vector<Block> blocks;
    bool in_example = false;
    int number = 0;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        ++number;
        if (line.starts_with("#:")) {
            Section section = SectionOf(line);
            if (section.word == "case") {
                blocks.push_back({{}, {{section.rest, number, {}}}});
                in_example = false; // lines below the title belong to no section
            } else if (section.word == "note" || blocks.empty()) {
                in_example = false;
                Prose(blocks).push_back(section.rest);
            } else {
                blocks.back().example.back().sections.push_back(std::move(section));
                in_example = true;
            }
        } else if (in_example) {
            blocks.back().example.back().sections.back().lines.emplace_back(line);
        } else {
            Prose(blocks).emplace_back(line);
        }
    }
    return blocks;
}

} // namespace kiv::manual
