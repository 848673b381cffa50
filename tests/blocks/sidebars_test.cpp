#include "blocks/sidebars.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The opened box.
std::string Box(const std::string& align, const std::string& width)
{
    return "<table cellspacing=0 cellpadding=6 align=" + align + " width=" + width +
           " border=0 bgcolor=\"#ffeecc\" hspace=7><TR><TD>"
           "<font face='verdana,geneva,arial,helvetica,helv' size=2>";
}

constexpr const char* kEnd = "</td></tr></table>";

TEST(Sidebars, Lines)
{
    const struct {
        std::string line, expanded;
    } rows[] = {
        {"Intro <zusidebar2>Tip: save often</zusidebar2> more",
         "Intro <table cellspacing=0 cellpadding=6 align=right width=150 border=0 "
         "bgcolor=\"#ffeecc\" hspace=7><TR><TD><font face='verdana,geneva,arial,helvetica,helv' "
         "size=2>Tip: save often</td></tr></table> more"},
        {"text <zusidebar2> more", "text " + Box("right", "150") + " more"},
        {"<zusidebar5>", Box("left", "250")}, // the end must come from later text
        {"<zusidebar1>a</zusidebar6>b",
         Box("left", "150") + "a" + kEnd + "b"}, // any end tag will do
        {"<zusidebar1>a</zusidebar>bc", Box("left", "150") + "a" + kEnd + "c"}, // 13 characters go
        {"<zusidebar1>a</zusidebar", Box("left", "150") + "a" + kEnd},
        {"<zusidebar1>a</zuSidebar1>",
         Box("left", "150") + "a</zuSidebar1>"},     // the end tag is exact
        {"<zusidebar1>a</zusidebar1>b</zusidebar1>", // one end tag is converted
         Box("left", "150") + "a" + kEnd + "b</zusidebar1>"},
        {"</zusidebar1>a<zusidebar1>b</zusidebar1>", // even one before the start tag
         std::string(kEnd) + "a" + Box("left", "150") + "b</zusidebar1>"},
        {"<zuSidebar1>a</zusidebar1>", "<zuSidebar1>a</zusidebar1>"}, // dispatched, but not found
        {"<zuSidebar1>a<zusidebar4>b</zusidebar4>", // the later tag, with the first one's values
         "<zuSidebar1>a" + Box("left", "150") + "b" + kEnd},
        {"<zuSidebar6><zusidebar", "<zuSidebar6>" + Box("right", "250")}, // shorter than a tag
        {"ASP:<zusidebar3>x", "ASP:" + Box("left", "200") + "x"}, // what stands before stays
    };
    for (const auto& row : rows) {
        BlockDesk desk({"</zusidebar1>"});
        EXPECT_EQ(desk.Expand(row.line), row.expanded) << row.line;
        EXPECT_THAT(desk.reporter.shown, IsEmpty()) << row.line;
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("</zusidebar1>")) << row.line;
    }
}

TEST(Sidebars, WithoutAStartTagNothingHappens)
{
    std::string line = "a</zusidebar1>";
    zusidebar(line, "left", "150");
    EXPECT_EQ(line, "a</zusidebar1>");
}

} // namespace
} // namespace kiv
