#include "exchange/encoded_text.h"

#include "exchange/charset_words.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 4> kFileDirectives = {"@FILE", "@DIR1", "@ASP", "@HTM"};

bool IsAscii(std::string_view text)
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Which bytes beyond ASCII a line has.
struct LineBytes {
    bool has_utf8 = false;  // sequences that are valid
    bool has_other = false; // bytes that are part of none
};

LineBytes BytesOf(std::string_view line)
{
    LineBytes bytes;
    while (!line.empty()) {
        const Utf8Character character = FirstUtf8(line);
        bytes.has_utf8 = bytes.has_utf8 || character.size > 1;
        bytes.has_other = bytes.has_other || character.size == 0;
        line.remove_prefix(std::max<std::size_t>(character.size, 1));
    }
    return bytes;
}

/// The line with its end; takes it off `rest`, which must not be empty.
std::string_view TakeWholeLine(std::string_view& rest)
{
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end == npos ? npos : end + 1);
    rest.remove_prefix(line.size());
    return line;
}

/// What is beyond ASCII in the lines that may change, and the first line (1-based; 0: none) of each
/// kind.
struct Found {
    int utf8_line = 0;
    int other_line = 0;
    std::vector<int> kept_lines;
};

Found LookAt(std::string_view text, SourceKind kind)
{
    Found found;
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view line = TakeWholeLine(text);
        if (IsAscii(line))
            continue;
        if (NamesFile(line, kind)) {
            found.kept_lines.push_back(number);
            continue;
        }
        const LineBytes bytes = BytesOf(line);
        if (bytes.has_utf8 && found.utf8_line == 0)
            found.utf8_line = number;
        if (bytes.has_other && found.other_line == 0)
            found.other_line = number;
    }
    return found;
}

/// Why a text cannot be changed; "" when it can, or need not be.
std::string FaultOf(std::string_view bytes, const Found& found, Encoding to)
{
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return "it is UTF-16";
    if (found.utf8_line > 0 && found.other_line > 0)
        return "it has lines in UTF-8, such as line " + Decimal(found.utf8_line) +
               ", and bytes that are none";
    if (to == Encoding::windows1252 && found.other_line > 0)
        return "it has bytes that are no UTF-8";
    return {};
}

/// Characters of a valid UTF-8 text that Windows-1252 lacks.
std::size_t CountLacking(std::string_view utf8, std::string_view converted)
{
    std::size_t characters = 0;
    for (std::string_view rest = utf8; !rest.empty(); ++characters)
        rest.remove_prefix(std::max<std::size_t>(FirstUtf8(rest).size, 1));
    if (characters == converted.size())
        return 0;
    std::size_t lacking = 0;
    while (!utf8.empty()) {
        const std::size_t size = std::max<std::size_t>(FirstUtf8(utf8).size, 1);
        lacking += FromUtf8(utf8.substr(0, size)).size() > 1 ? 1U : 0U;
        utf8.remove_prefix(size);
    }
    return lacking;
}

/// Changes each line but those that name files.
void Convert(EncodedText& text, Encoding to, SourceKind kind)
{
    std::string converted;
    converted.reserve(text.bytes.size() + text.bytes.size() / 16);
    for (std::string_view rest = text.bytes; !rest.empty();) {
        const std::string_view line = TakeWholeLine(rest);
        if (IsAscii(line) || NamesFile(line, kind)) {
            converted.append(line);
        } else if (to == Encoding::utf8) {
            converted.append(ToUtf8(line));
        } else {
            const std::string single = FromUtf8(line);
            text.references += CountLacking(line, single);
            converted.append(single);
        }
    }
    text.bytes = std::move(converted);
}

} // namespace

std::string_view NameOf(Encoding encoding)
{
    return encoding == Encoding::utf8 ? "UTF-8" : "Windows-1252";
}

bool NamesFile(std::string_view line, SourceKind kind)
{
    if (line.starts_with("++") || line.starts_with("!++"))
        return true;
    if (kind.is_template && line.starts_with('+'))
        return true;
    return kind.names_files && std::ranges::any_of(kFileDirectives, [&](std::string_view word) {
               return StartsWithNoCase(line, word) &&
                      Trim(line.substr(word.size())).starts_with('=');
           });
}

EncodedText Encoded(std::string_view bytes, Encoding to, SourceKind kind)
{
    EncodedText text{.bytes = std::string(bytes), .kept_lines = {}, .fault = {}};
    text.lost_mark = bytes.starts_with(kUtf8Mark);
    if (text.lost_mark)
        text.bytes.erase(0, kUtf8Mark.size());
    Found found = LookAt(text.bytes, kind);
    text.fault = FaultOf(bytes, found, to);
    if (!text.fault.empty()) {
        text.bytes = bytes;
        text.lost_mark = false;
        text.fault_line = found.other_line;
        return text;
    }
    text.kept_lines = std::move(found.kept_lines);
    if ((to == Encoding::utf8 ? found.other_line : found.utf8_line) > 0)
        Convert(text, to, kind);
    const ChangedWords words = ChangeCharsetWords(text.bytes, to);
    text.declarations = words.changed;
    text.declares = words.declarations > 0;
    return text;
}

} // namespace kiv
