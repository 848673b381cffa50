// Menus that show the page one is on in another way.
#include "exchange/menu_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

/// What a menu's line looks like on two pages, and how a list says it.
struct MenuCase {
    const char* name;
    std::string on_bread; // the page bread.htm
    std::string on_flour;
    std::string source; // of the line on bread.htm; "": none
    std::string form;
};

class Menus : public testing::TestWithParam<MenuCase> {};

std::string FormOf(const CodedLine& line)
{
    std::vector<const MenuForm*> forms;
    line.AddForms(forms);
    return forms.empty() ? "" : forms.front()->yes + "|" + forms.front()->no;
}

TEST_P(Menus, AreToldAsPageReferences)
{
    MenuForms menus({"bread.htm", "flour.htm", "oven.htm"});
    menus.Learn(GetParam().on_bread, "bread.htm", GetParam().on_flour);
    menus.Learn(GetParam().on_flour, "flour.htm", GetParam().on_bread);
    const std::optional<CodedLine> told = menus.Told(GetParam().on_bread, "bread.htm");
    ASSERT_EQ(told.has_value(), !GetParam().source.empty());
    if (!told)
        return;
    EXPECT_EQ(told->Source(), GetParam().source);
    EXPECT_EQ(FormOf(*told), GetParam().form);
    CodeValues values;
    EXPECT_EQ(told->On(values), std::nullopt); // a page that menus cannot know
    values.menu_name = "bread.htm";
    EXPECT_EQ(told->On(values), GetParam().on_bread);
    values.menu_name = "flour.htm";
    EXPECT_EQ(told->On(values), GetParam().on_flour);
}

const MenuCase kCases[] = {
    {"Bold", "<li><b>Bread</b></li>", "<li><a href=\"bread.htm\">Bread</a></li>",
     "<li>??1[bread.htm|Bread]</li>", "<b>!2</b>|<a href=\"!1\">!2</a>"},
    {"AnItemOfAClass", "<li class=\"on\"><a href=\"bread.htm\">Bread</a></li>",
     "<li><a href=\"bread.htm\">Bread</a></li>", "??1[bread.htm|Bread]",
     "<li class=\"on\"><a href=\"!1\">!2</a></li>|<li><a href=\"!1\">!2</a></li>"},
    {"ALinkOfAClass", "  <a class=\"on\" href=\"bread.htm\">Bread</a><br>",
     "  <a href=\"bread.htm\">Bread</a><br>", "  ??1[bread.htm|Bread]<br>",
     "<a class=\"on\" href=\"!1\">!2</a>|<a href=\"!1\">!2</a>"},
    {"TextAlone", "<p>Bread | <a href=\"oven.htm\">Oven</a>",
     "<p><a href=\"bread.htm\">Bread</a> | <a href=\"oven.htm\">Oven</a>",
     "<p>??1[bread.htm|Bread] | ??1[oven.htm|Oven]", "!2|<a href=\"!1\">!2</a>"},
    {"SeveralInALine",
     "<p><i>Bread</i>, <a href=\"oven.htm\">Oven</a>, "
     "<a href=\"flour.htm\">Flour</a></p>",
     "<p><a href=\"bread.htm\">Bread</a>, <a href=\"oven.htm\">Oven</a>, <i>Flour</i></p>",
     "<p>??1[bread.htm|Bread], ??1[oven.htm|Oven], ??1[flour.htm|Flour]</p>",
     "<i>!2</i>|<a href=\"!1\">!2</a>"},
    {"WhatABuildActsOn", "<b>@TITLE</b>", "<a href=\"bread.htm\">@TITLE</a>", "", ""},
    {"AFieldsEnd", "<b>Bread [1]</b>", "<a href=\"bread.htm\">Bread [1]</a>", "", ""},
    {"APlaceholder", "<b>Bread !2</b>", "<a href=\"bread.htm\">Bread !2</a>", "", ""},
    {"APageThatIsNot", "<b>Rye</b>", "<a href=\"rye.htm\">Rye</a>", "", ""},
    {"NothingButEnds", "<", "<a href=\"bread.htm\">", "", ""},
    {"NothingAtAll", "", "", "", ""},
};

INSTANTIATE_TEST_SUITE_P(MenuForms, Menus, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(MenuForms, AreNineAtMostAndGivenUpWhenNoLineHasThem)
{
    MenuForms menus({"bread.htm", "flour.htm"});
    for (char tag = 'k'; tag <= 'v'; ++tag) {
        const std::string own = std::string("<") + tag + ">Bread";
        menus.Learn(own, "bread.htm", "<a href=\"bread.htm\">Bread</a>");
        EXPECT_EQ(menus.Told(own, "bread.htm").has_value(), tag <= 's') << tag;
    }
    const std::optional<CodedLine> kept = menus.Told("<m>Bread", "bread.htm");
    menus.ForgetUnused();
    EXPECT_FALSE(menus.Told("<k>Bread", "bread.htm"));
    EXPECT_TRUE(menus.Told("<m>Bread", "bread.htm"));
    menus.Learn("<z>Bread", "bread.htm", "<a href=\"bread.htm\">Bread</a>");
    EXPECT_EQ(menus.Told("<z>Bread", "bread.htm")->Source(), "??1[bread.htm|Bread]");
    EXPECT_EQ(kept->Source(), "??3[bread.htm|Bread]");
}

} // namespace
} // namespace kiv
