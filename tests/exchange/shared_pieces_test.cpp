// Texts that several pages have in their middle.
#include "exchange/shared_pieces.h"

#include <gtest/gtest.h>

#include <string>

namespace kiv {
namespace {

/// Pages as letters, each a line: capitals are lines of 60 characters, others of one.
struct PieceCase {
    const char* name;
    std::vector<std::string> pages;
    std::vector<OwnSpan> spans; // of each page; none: all of it
    std::string found;          // "page:line+length" of each, in the order of the pages
};

class Pieces : public testing::TestWithParam<PieceCase> {};

TEST_P(Pieces, AreFound)
{
    std::vector<std::vector<std::string>> texts;
    std::vector<std::vector<std::string_view>> lines;
    for (const std::string& page : GetParam().pages) {
        std::vector<std::string>& text = texts.emplace_back();
        for (const char c : page)
            text.emplace_back(c >= 'A' && c <= 'Z' ? 60 : 1, c);
    }
    std::vector<OwnText> own;
    lines.reserve(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::vector<std::string_view>& views =
            lines.emplace_back(texts[i].begin(), texts[i].end());
        own.push_back({&views, GetParam().spans.empty()
                                   ? std::vector<OwnSpan>{{0, views.size()}}
                                   : std::vector<OwnSpan>{GetParam().spans[i]}});
    }
    const SharedPieces pieces = FindPieces(own);
    std::string found;
    for (std::size_t page = 0; page < pieces.places.size(); ++page)
        for (const PiecePlace& place : pieces.places[page])
            found += std::to_string(page) + ":" + std::to_string(place.first) + "+" +
                     std::to_string(pieces.pieces[place.piece].size()) + " ";
    EXPECT_EQ(found, GetParam().found);
}

const PieceCase kPieces[] = {
    {"OnTwoPages", {"abABCDEc", "xABCDEyz"}, {}, "0:2+5 1:1+5 "},
    {"AsLongAsTheyAre", {"ABCDEFGh", "ABCDEFGi"}, {}, "0:0+7 1:0+7 "},
    {"AsLongAsAllHaveThem", {"ABCDEFx", "ABCDEFy", "ABCDEz"}, {}, "0:0+5 1:0+5 2:0+5 "},
    {"TooFewLines", {"aABCDb", "xABCDy"}, {}, ""},
    {"TooShortLines", {"abcdefgh", "abcdefgh"}, {}, ""},
    {"OnlyOncePerPage", {"ABCDEaABCDE"}, {}, ""},
    {"TwoPieces", {"ABCDEaFGHIJ", "FGHIJbABCDE"}, {}, "0:0+5 0:6+5 1:0+5 1:6+5 "},
    {"WithinTheirSpans", {"ABCDEFG", "ABCDEFG"}, {{1, 7}, {0, 6}}, "0:1+5 1:1+5 "},
    {"NothingOutsideThem", {"ABCDEFG", "ABCDEFG"}, {{3, 7}, {0, 7}}, ""},
    {"EmptyPages", {"", ""}, {}, ""},
    {"OneLineAgainAndAgain", {"AAAAAAAA", "AAAAAAAAA"}, {}, "0:0+8 1:0+8 "},
};

INSTANTIATE_TEST_SUITE_P(SharedPieces, Pieces, testing::ValuesIn(kPieces),
                         [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace kiv
