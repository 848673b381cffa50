// Writes the bodies of the manual's pages: kiv-manual-bodies CHAPTERS BODIES
#include "docs/manual/generator/chapter_html.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

bool WriteBody(const fs::path& chapter, const fs::path& folder)
{
    std::ifstream source(chapter, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(source), {}};
    std::ofstream body(folder / chapter.stem().concat(".htm"), std::ios::binary);
    body << kiv::manual::ChapterHtml(text) << std::flush;
    return static_cast<bool>(body);
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::cerr << "usage: kiv-manual-bodies CHAPTERS BODIES\n";
        return 2;
    }
    try {
        fs::create_directories(arguments[2]);
        for (const fs::directory_entry& entry : fs::directory_iterator(arguments[1]))
            if (entry.path().extension() == ".txt" && !WriteBody(entry.path(), arguments[2]))
                throw std::runtime_error("cannot write the body of " + entry.path().string());
    } catch (const std::exception& error) {
        std::cerr << "kiv-manual-bodies: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
