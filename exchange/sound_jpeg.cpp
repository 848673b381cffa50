#include "exchange/sound_jpeg.h"

#include "text/text.h"

#include <cstddef>

namespace kiv {

namespace {

constexpr std::string_view kBegin = "\xFF\xD8";
constexpr std::string_view kTables = "\xFF\xC4";
constexpr unsigned kScan = 0xDA;
constexpr unsigned kComment = 0xFE;

unsigned Byte(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

/// Whether a segment is of no matter for the pixels; the first and the fourteenth of programs tell
/// how colours are meant.
bool IsNote(unsigned marker)
{
    return marker == kComment || (marker >= 0xE1 && marker <= 0xEF && marker != 0xEE);
}

/// The tables of one segment, which begins with its size.
bool AreSound(std::string_view segment)
{
    constexpr std::size_t kHead = 17; // of a table: its number, and how many codes of each length
    std::size_t left = Byte(segment, 0) * 256 + Byte(segment, 1);
    left = left < 2 ? 0 : left - 2;
    for (std::size_t at = 2; left > 0;) {
        std::size_t codes = 0;
        for (std::size_t i = 1; i < kHead; ++i)
            codes += Byte(segment, at + i);
        if (codes > 256)
            return false;
        at += kHead + codes;
        left -= left < kHead + codes ? left : kHead + codes;
    }
    return true;
}

} // namespace

std::string PlainJpeg(std::string_view jpeg)
{
    if (!jpeg.starts_with(kBegin))
        return std::string(jpeg);
    std::string plain(kBegin);
    std::size_t at = kBegin.size();
    while (Byte(jpeg, at) == 0xFF && at + 4 <= jpeg.size()) {
        const unsigned marker = Byte(jpeg, at + 1);
        const std::size_t size = 2 + Byte(jpeg, at + 2) * 256 + Byte(jpeg, at + 3);
        if (marker < 0xC0 || marker == kScan || marker == 0xFF || size < 4)
            break;
        if (!IsNote(marker))
            plain.append(jpeg.substr(at, size));
        at += size;
    }
    return at < jpeg.size() ? plain.append(jpeg.substr(at)) : plain;
}

bool HasSoundTables(std::string_view plain_jpeg)
{
    for (std::size_t at = 0; (at = plain_jpeg.find(kTables, at)) != npos; at += kTables.size())
        if (!AreSound(plain_jpeg.substr(at + kTables.size())))
            return false;
    return true;
}

} // namespace kiv
