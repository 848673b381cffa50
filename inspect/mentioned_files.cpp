#include "inspect/mentioned_files.h"

#include "text/text.h"

namespace kiv {

namespace {

bool IsNameCharacter(char c)
{
    constexpr std::string_view kSigns = "_-.%~";
    const char upper = AsciiUpper(c);
    return (upper >= 'A' && upper <= 'Z') || (c >= '0' && c <= '9') || kSigns.find(c) != npos ||
           static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

std::vector<std::string> MentionedFiles(std::string_view script)
{
    std::vector<std::string> names;
    std::size_t begin = 0;
    for (std::size_t at = 0; at <= script.size(); ++at) {
        if (at < script.size() && IsNameCharacter(script[at]))
            continue;
        const std::string_view word = script.substr(begin, at - begin);
        const std::size_t point = word.rfind('.');
        if (point != npos && point > 0 && point + 1 < word.size())
            names.emplace_back(word);
        begin = at + 1;
    }
    return names;
}

} // namespace kiv
