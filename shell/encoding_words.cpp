#include "shell/encoding_words.h"

#include "shell/encodings.h"
#include "text/joined_text.h"

namespace kiv {

std::string EncodingChangeWords(const EncodingChange& change)
{
    if (change.is_taken_back)
        return ": as it was before";
    std::string words;
    const auto add = [&](const std::string& more) {
        Append(words, {words.empty() ? ": " : ", ", more});
    };
    if (change.references > 0)
        add(std::to_string(change.references) +
            (change.references == 1 ? " reference" : " references"));
    if (change.lost_mark)
        add("without its byte order mark");
    if (change.declarations > 0)
        add("declares it");
    return words;
}

} // namespace kiv
