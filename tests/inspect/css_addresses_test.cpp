// The addresses of a style sheet.
#include "inspect/css_addresses.h"

#include <gtest/gtest.h>

namespace kiv {

namespace {

/// Each with a blank behind it; an import has "!" before it.
std::string AddressesOf(std::string_view css)
{
    std::string all;
    for (const CssAddress& found : CssAddresses(css)) {
        EXPECT_EQ(css.substr(found.at, found.address.size()), found.address);
        all.append(found.is_import ? "!" : "").append(found.address).append(" ");
    }
    return all;
}

TEST(CssAddressesTest, InEachForm)
{
    const std::pair<const char*, const char*> rows[] = {
        {"p { background: url(a.gif) }", "a.gif "},
        {"p { background: URL( 'a b.gif' ), url(\"c.gif\") }", "a b.gif c.gif "},
        {"@import \"a.css\"; @import 'b.css' print;", "!a.css !b.css "},
        {"@import url(a.css); p { content: \"url(no.gif)\"; background: url(b.gif) }",
         "!a.css b.gif "},
        {"/* url(a.gif) */ p { color: red } /* @import 'a' ", ""},
        {"/* a */*{}b{background:url(a.gif)}/**/*{}c{background:url(b.gif)}/*/*/d{}",
         "a.gif b.gif "},
        {"p::before { content: \"\\\" url(no.gif) \"; background: url('b.gif') }", "b.gif "},
        {"p { content: '\\", ""},
        {"@import; p { content: 'x' }", ""},
        {"url()", ""},
        {"url(", ""},
        {"url('", ""},
        {"url(a.gif", "a.gif "},
        {"'", ""},
        {"@import", ""},
    };
    for (const auto& [css, addresses] : rows)
        EXPECT_EQ(AddressesOf(css), addresses) << css;
}

} // namespace

} // namespace kiv
