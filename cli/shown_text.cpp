#include "cli/shown_text.h"

#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

/// Whether a terminal may take a byte of UTF-8 for an order. Of the characters of two bytes these
/// are U+0080 to U+009F, which begin with C2.
bool Steers(unsigned char byte)
{
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

void AppendNumber(std::string& shown, unsigned char byte)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    shown.append("\\x");
    shown.push_back(kDigits[byte >> 4U]);
    shown.push_back(kDigits[byte & 0xFU]);
}

} // namespace

std::string ShownUtf8(std::string_view utf8)
{
    std::string shown;
    shown.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const auto byte = static_cast<unsigned char>(utf8[at]);
        const auto next = static_cast<unsigned char>(at + 1 < utf8.size() ? utf8[at + 1] : 0);
        if (byte == 0xC2 && next >= 0x80 && next <= 0x9F) {
            AppendNumber(shown, next);
            ++at;
        } else if (byte == '\r' && next == '\n') {
            continue;
        } else if (Steers(byte)) {
            AppendNumber(shown, byte);
        } else {
            shown.push_back(utf8[at]);
        }
    }
    return shown;
}

std::string ShownText(std::string_view text)
{
    return ShownUtf8(ToUtf8(text));
}

} // namespace kiv
