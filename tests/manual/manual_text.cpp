#include "tests/manual/manual_text.h"

#include "docs/manual/generator/chapter.h"
#include "tests/support/folders.h"
#include "text/text.h"

#include <algorithm>
#include <functional>
#include <map>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

void AddSpans(const std::string& line, std::vector<std::string>& spans)
{
    for (std::size_t at = line.find('`'); at != npos; at = line.find('`', at)) {
        const std::size_t end = line.find('`', at + 1);
        if (end == npos)
            return;
        spans.push_back(line.substr(at + 1, end - at - 1));
        at = end + 1;
    }
}

bool EndsInMark(const std::string& name)
{
    return name.ends_with('[') || name.ends_with(':');
}

std::string Stripped(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \r\n");
    if (begin == npos)
        return {};
    return std::string(text.substr(begin, text.find_last_not_of(" \r\n") - begin + 1));
}

} // namespace

std::vector<fs::path> Chapters()
{
    std::vector<fs::path> chapters;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(KIV_ROOT) / "docs/manual/chapters"))
        if (entry.path().extension() == ".txt")
            chapters.push_back(entry.path());
    std::sort(chapters.begin(), chapters.end());
    return chapters;
}

const std::vector<std::string>& CodeSpans(std::string_view chapter)
{
    static std::map<std::string, std::vector<std::string>, std::less<>> known; // read once
    const auto [place, is_new] = known.try_emplace(std::string(chapter));
    std::vector<std::string>& spans = place->second;
    if (!is_new)
        return spans;
    for (const fs::path& path : Chapters())
        if (chapter.empty() || path.stem() == chapter)
            for (const manual::Block& block : manual::ReadChapter(ReadBytes(path)))
                for (const std::string& line : block.prose)
                    AddSpans(line, spans);
    return spans;
}

std::vector<std::string> Unmentioned(const std::vector<std::string>& names,
                                     const std::vector<std::string>& spans)
{
    std::vector<std::string> missing;
    for (const std::string& name : names) {
        const bool told = std::any_of(spans.begin(), spans.end(), [&](const std::string& span) {
            return EqualsNoCase(span, name) || (EndsInMark(name) && StartsWithNoCase(span, name));
        });
        if (!told)
            missing.push_back(name);
    }
    return missing;
}

std::vector<std::string> Untold(const std::vector<std::string>& texts,
                                const std::vector<std::string>& spans)
{
    std::vector<std::string> missing;
    for (const std::string& text : texts) {
        const std::string words = Stripped(text);
        const bool told = words.size() < 3 ||
                          std::any_of(spans.begin(), spans.end(), [&](const std::string& span) {
                              return Contains(span, words);
                          });
        if (!told)
            missing.push_back(words);
    }
    return missing;
}

} // namespace kiv::test
