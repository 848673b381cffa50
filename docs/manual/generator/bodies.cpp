#include "docs/manual/generator/bodies.h"

#include "docs/manual/generator/chapter_html.h"
#include "docs/manual/generator/search_index.h"
#include "docs/manual/generator/word_index.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace kiv::manual {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kWordsPage = "words"; // behind its prose stands the index of words

void WriteText(const fs::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text << std::flush;
    if (!file)
        throw std::runtime_error("cannot write " + path.string());
}

} // namespace

void WriteBodies(const std::string& manual, const std::string& site)
{
    const std::vector<ManualPage> pages = ReadManual(manual);
    const fs::path bodies = fs::path(site) / "body";
    fs::create_directories(bodies);
    for (const ManualPage& page : pages) {
        std::string body = ChapterHtml(page.chapter);
        if (page.name == kWordsPage)
            body += WordIndexHtml(WordFamilies(), pages);
        WriteText(bodies / (page.name + ".htm"), body);
    }
    WriteText(fs::path(site) / "search-index.js", SearchIndexScript(pages));
}

} // namespace kiv::manual
