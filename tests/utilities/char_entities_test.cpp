#include "utilities/char_entities.h"

#include "text/windows1252.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace kiv {
namespace {

// Rows 1 to 89: the code point of the character to find and the entity's name.
constexpr struct {
    char32_t code_point;
    const char* name;
} kNamedCharacters[] = {
    {0xA1, "iexcl"},   {0xA2, "cent"},    {0xA3, "pound"},   {0xA4, "curren"},  {0xA5, "yen"},
    {0xA7, "sect"},    {0xA8, "uml"},     {0xA9, "copy"},    {0xAE, "reg"},     {0xB0, "deg"},
    {0xB2, "sup2"},    {0xB3, "sup3"},    {0xB6, "para"},    {0xB9, "sup1"},    {0xBA, "ordm"},
    {0xBC, "frac14"},  {0xBD, "frac12"},  {0xBE, "frac34"},  {0xBF, "iquest"},  {0xC0, "Agrave"},
    {0xC1, "Aacute"},  {0xC2, "Acirc"},   {0xC3, "Atilde"},  {0xC4, "Auml"},    {0xC5, "Aring"},
    {0xC6, "AElig"},   {0xC7, "Ccedil"},  {0xC8, "Egrave"},  {0xC9, "Eacute"},  {0xCA, "Ecirc"},
    {0xCB, "Euml"},    {0xCC, "Igrave"},  {0xCD, "Iacute"},  {0xCE, "Icirc"},   {0xCF, "Iuml"},
    {0xD0, "ETH"},     {0xD1, "Ntilde"},  {0xD2, "Ograve"},  {0xD3, "Oacute"},  {0xD4, "Ocirc"},
    {0xD5, "Otilde"},  {0xD6, "Ouml"},    {0xD7, "times"},   {0xD8, "Oslash"},  {0xD9, "Ugrave"},
    {0xDA, "Uacute"},  {0xDB, "Ucirc"},   {0xDC, "Uuml"},    {0xDD, "Yacute"},  {0xDE, "THORN"},
    {0xDF, "szlig"},   {0xE0, "agrave"},  {0xE1, "aacute"},  {0xE2, "acirc"},   {0xE3, "atilde"},
    {0xE4, "auml"},    {0xE5, "aring"},   {0xE6, "aelig"},   {0xE7, "ccedil"},  {0xE8, "egrave"},
    {0xE9, "eacute"},  {0xEA, "ecirc"},   {0xEB, "euml"},    {0xEC, "igrave"},  {0xED, "iacute"},
    {0xEE, "icirc"},   {0xEF, "iuml"},    {0xF0, "eth"},     {0xF1, "ntilde"},  {0xF2, "ograve"},
    {0xF3, "oacute"},  {0xF4, "ocirc"},   {0xF5, "otilde"},  {0xF6, "ouml"},    {0xF7, "divide"},
    {0xF8, "oslash"},  {0xF9, "ugrave"},  {0xFA, "uacute"},  {0xFB, "ucirc"},   {0xFC, "uuml"},
    {0xFD, "yacute"},  {0xFF, "yuml"},    {0x160, "Scaron"}, {0x161, "scaron"}, {0x178, "Yuml"},
    {0x2018, "lsquo"}, {0x2019, "rsquo"}, {0x201C, "ldquo"}, {0x201D, "rdquo"},
};

TEST(CharEntities, NamedCharacters)
{
    ASSERT_EQ(std::size(kNamedCharacters), 89U);
    ASSERT_EQ(CharEntityTable().size(), 97U);
    for (std::size_t i = 0; i < std::size(kNamedCharacters); ++i) {
        const EntityRow& row = CharEntityTable()[i];
        ASSERT_EQ(row.find.size(), 1U) << i;
        EXPECT_EQ(CodePoint(row.find[0]), kNamedCharacters[i].code_point) << i;
        EXPECT_EQ(row.replacement, std::string("&") + kNamedCharacters[i].name + ";");
    }
}

TEST(CharEntities, DashesEllipsisAndGrave)
{
    const struct {
        std::string find; // UTF-8
        std::string replacement;
    } kRows[] = {
        {" \xE2\x80\x94 ", " &mdash; "}, // em dash between blanks
        {" \xE2\x80\x93 ", " &mdash; "}, // en dash between blanks
        {" -- ", " &mdash; "},
        {" - ", " &mdash; "},
        {"\xE2\x80\x94", " &mdash; "}, // em dash
        {"\xE2\x80\x93", "&ndash;"},   // en dash
        {"\xE2\x80\xA6", "..."},       // ellipsis
        {"\x60", "\x27"},              // grave accent, apostrophe
    };
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        const EntityRow& row = CharEntityTable()[89 + i];
        EXPECT_EQ(ToUtf8(row.find), kRows[i].find) << i;
        EXPECT_EQ(row.replacement, kRows[i].replacement) << i;
    }
}

TEST(CharEntities, LeaveGaps)
{
    constexpr char32_t kGaps[] = {0xA0, 0xA6, 0xAA, 0xAB, 0xAC, 0xAD, 0xAF,   0xB1,
                                  0xB4, 0xB5, 0xB7, 0xB8, 0xBB, 0xFE, 0x20AC, 0x2122};
    for (const char32_t gap : kGaps)
        for (const EntityRow& row : CharEntityTable())
            EXPECT_FALSE(row.find.size() == 1 && CodePoint(row.find[0]) == gap)
                << static_cast<unsigned>(gap);
}

} // namespace
} // namespace kiv
