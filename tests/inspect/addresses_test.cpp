// Addresses taken apart.
#include "inspect/addresses.h"

#include <gtest/gtest.h>

namespace kiv {

namespace {

TEST(AddressesTest, TheirKind)
{
    const std::pair<const char*, AddressKind> rows[] = {
        {"visit.htm", AddressKind::site},
        {"", AddressKind::site},
        {"#top", AddressKind::site},
        {"/visit.htm", AddressKind::site},
        {"a/b:c.htm", AddressKind::site},
        {"?t=12:30", AddressKind::site},
        {"//example.com/a", AddressKind::external},
        {"\\\\server\\share", AddressKind::external},
        {"HTTP://example.com", AddressKind::external},
        {"ftp://example.com/a", AddressKind::external},
        {"mailto:a@example.com", AddressKind::other},
        {"JavaScript:go('//x')", AddressKind::other},
        {"data:image/gif;base64,//8", AddressKind::other},
        {"tel:+1", AddressKind::other},
        {"c:a.htm", AddressKind::drive},
        {"C:\\site\\a.htm", AddressKind::drive},
        {"file:a.htm", AddressKind::drive},
        {" FILE:///C:/a.htm", AddressKind::drive},
        {"a&#57344;.htm", AddressKind::unknown},
        {"\f", AddressKind::unknown},
    };
    for (const auto& [text, kind] : rows)
        EXPECT_EQ(ReadAddress(text).kind, kind) << text;
}

TEST(AddressesTest, TheirParts)
{
    const Address address = ReadAddress(" ../a%20b\\c.htm?x=1/2?#part%C3%A9#2 ");
    EXPECT_EQ(address.path, "../a b/c.htm");
    EXPECT_EQ(address.fragment, "part\xE9#2");
    EXPECT_TRUE(address.has_backslash);
    EXPECT_FALSE(address.from_root);
}

TEST(AddressesTest, ABackslashInAQueryIsNone)
{
    EXPECT_FALSE(ReadAddress("a.asp?p=C:\\x").has_backslash);
    EXPECT_FALSE(ReadAddress("a.htm#\\x").has_backslash);
}

TEST(AddressesTest, LineEndsInAnAddressCountForNothing)
{
    EXPECT_EQ(ReadAddress("vis\r\n\tit.htm").path, "visit.htm");
}

TEST(AddressesTest, PercentCodesThatAreNone)
{
    const std::pair<const char*, const char*> rows[] = {
        {"100%", "100%"}, {"%4", "%4"}, {"%zz", "%zz"}, {"%41%4", "A%4"}, {"%E9", "\xE9"},
    };
    for (const auto& [text, plain] : rows)
        EXPECT_EQ(WithoutPercents(text), plain);
}

} // namespace

} // namespace kiv
