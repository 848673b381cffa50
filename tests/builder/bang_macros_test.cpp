#include "builder/bang_macros.h"

#include "tests/builder/message_recorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kFull = "resizable=yes,scrollbars=yes,status=yes,toolbar=yes,location=yes,"
                          "directories=yes,menubar=yes,";

struct BangMacros : testing::Test {
    MessageRecorder recorder;
    BuildMessages messages{recorder};
    PageBangs page;
    Addresses addresses{.kel = "http://k/",
                        .mor = "http://m/",
                        .plugin_page = "http://plug/page",
                        .plugin_cabinet = "http://plug/cab#version=7,0,0,0"};

    std::string Popup(std::string line)
    {
        ExpandPopup(line, 0, page, messages);
        return line;
    }
    std::string ShowHide(std::string line)
    {
        ExpandShowHide(line, 0, page, messages);
        return line;
    }
    std::string Flv(std::string line)
    {
        ExpandFlv(line, 0, addresses, messages);
        return line;
    }
    std::string Mailto(std::string line)
    {
        ExpandMailto(line, 0, messages);
        return line;
    }
    std::string Swap(std::string line)
    {
        ExpandSwap(line, 0, messages);
        return line;
    }
    std::string Flash(std::string line)
    {
        ExpandFlash(line, 0, addresses, messages);
        return line;
    }

    template <typename Call>
    void ExpectSubscript(Call call, const std::string& macro)
    {
        const std::optional<RunError> error = FatalError(call);
        ASSERT_TRUE(error.has_value()) << macro;
        EXPECT_EQ(error->kind, ErrorKind::subscript) << macro;
        EXPECT_THAT(error->text, HasSubstr(macro));
    }
};

// What a simple popup writes for `url` as window `name`.
std::string SimpleAnchor(const std::string& url, const std::string& name)
{
    return "<a href=\"" + url + "\" onClick=\"" + name + "=window.open('', '" + name + "','" +
           kFull + "width=800,height=600');" + name + ".focus()\" target=\"" + name + "\">";
}

TEST_F(BangMacros, LineWithoutTheMacroStays)
{
    for (const char* line :
         {"", "text", "!!popular", "!!flvx", "!! pop[a.htm]", "!!1[a]", "!!pop"}) {
        EXPECT_EQ(Popup(line), line);
        EXPECT_EQ(ShowHide(line), line);
        EXPECT_EQ(Flv(line), line);
        EXPECT_EQ(Mailto(line), line);
        EXPECT_EQ(Swap(line), line);
        EXPECT_EQ(Flash(line), line);
    }
    EXPECT_EQ(page.PopupCounter, 0);
    EXPECT_EQ(page.ShowHideIds, "");
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, SimplePopupWrittenOut)
{
    page.PopupCounter = 2;
    EXPECT_EQ(Popup("See !!pop[u.asp]here</a>."),
              "See <a href=\"u.asp\" onClick=\"popwin3=window.open('', 'popwin3','resizable=yes,"
              "scrollbars=yes,status=yes,toolbar=yes,location=yes,directories=yes,menubar=yes,"
              "width=800,height=600');popwin3.focus()\" target=\"popwin3\">here</a>.");
    EXPECT_EQ(page.PopupCounter, 3);
}

TEST_F(BangMacros, SimplePopups)
{
    const struct {
        std::string line;
        std::string url;
        std::string behind;
        const char* why;
    } kRows[] = {
        {"!!Pop[page.htm!]", "page.htm", "page.htm</a>", "mixed case, link text from the url"},
        {"!!POP[page.htm]", "page.htm", "", "upper case, no link text"},
        {"!!pop[http://www.site.org/!]", "http://www.site.org/", "site.org</a>", "all three go"},
        {"!!pop[http://www.site.org/]", "http://www.site.org/", "", "the url is never shortened"},
        {"!!pop[www.x.htm!]", "www.x.htm", "x.htm</a>", "www. without http://"},
        {"!!pop[http://http://a!]", "http://http://a", "http://a</a>", "once each"},
        {"!!pop[http://www.www.a//!]", "http://www.www.a//", "www.a/</a>", "once each"},
        {"!!pop[https://a/!]", "https://a/", "https://a</a>", "exactly those seven characters"},
        {"!!pop[httpHTTP://a!]", "httpHTTP://a", "httpHTTP://a</a>", "at the head only"},
        {"!!pop[http://!]", "http://", "", "an empty link text counts as none"},
        {"!!pop[http://www./!]", "http://www./", "", "an empty link text counts as none"},
        {"!!pop[a.htm!!]", "a.htm!", "a.htm!</a>", "one ! goes from the url"},
        {"!!pop[a.html] x]", "a.html", " x]", "the first ] closes"},
        {"!!pop[ x.aspx ]", " x.aspx ", "", "no trimming"},
        {"!!pop[http]", "http", "", "http at the head is enough"},
        {"!!pop[a.htm#\"q\"]", "a.htm#\"q\"", "", "no escaping"},
    };
    for (const auto& row : kRows) {
        page.PopupCounter = 0;
        EXPECT_EQ(Popup(row.line), SimpleAnchor(row.url, "popwin1") + row.behind) << row.why;
        EXPECT_EQ(page.PopupCounter, 1) << row.why;
    }
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, OnePopupACallAndTheCounterRunsOn)
{
    const std::string once = Popup("\xC9!!pop[a.htm]1</a> !!POP[b.htm]2</a>");
    EXPECT_EQ(once, "\xC9" + SimpleAnchor("a.htm", "popwin1") + "1</a> !!POP[b.htm]2</a>");
    EXPECT_EQ(Popup(once), "\xC9" + SimpleAnchor("a.htm", "popwin1") + "1</a> " +
                               SimpleAnchor("b.htm", "popwin2") + "2</a>");
}

TEST_F(BangMacros, FullPopups)
{
    const struct {
        const char* arguments;
        std::string features_and_size;
        const char* why;
    } kRows[] = {
        {"w|u.htm|30|40", "resizable=yes,scrollbars=yes,status=yes,width=30,height=40", "four"},
        {"w|u.htm|30|40|", "resizable=yes,scrollbars=yes,status=yes,width=30,height=40", "empty"},
        {"w|u.htm|30|40|full", kFull + "width=30,height=40", "full"},
        {"w|u.htm|30|40|FULL", kFull + "width=30,height=40", "full in any case"},
        {"w|u.htm|30|40|width=5", "width=5,width=30,height=40", "a comma is appended"},
        {"w|u.htm|30|40|a=b,", "a=b,width=30,height=40", "a comma is there"},
        {"w|u.htm|30|40|full ", "full ,width=30,height=40", "compared as written"},
        {"w|u.htm|30|40|full|x", "resizable=yes,scrollbars=yes,status=yes,width=30,height=40",
         "with six the fifth is ignored"},
        {"w|u.htm|30|40|full||", "resizable=yes,scrollbars=yes,status=yes,width=30,height=40",
         "seven"},
        {"w|u.htm|||", "resizable=yes,scrollbars=yes,status=yes,width=,height=", "empty size"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Popup(std::string("a!!pop[") + row.arguments + "]b"),
                  "a<a href=\"u.htm\" onClick=\"w=window.open('', 'w','" + row.features_and_size +
                      "');w.focus()\" target=\"w\">b")
            << row.why;
    EXPECT_EQ(page.PopupCounter, 0); // the full form has a name of its own
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, FullPopupHasNoLinkText)
{
    EXPECT_EQ(Popup("!!pop[w|u.htm!|1|2]"),
              "<a href=\"u.htm!\" onClick=\"w=window.open('', 'w','resizable=yes,scrollbars=yes,"
              "status=yes,width=1,height=2');w.focus()\" target=\"w\">");
}

TEST_F(BangMacros, PopupWithThreeFieldsDropsTheLine)
{
    EXPECT_EQ(Popup("before !!pop[w|u.htm|30] after"), "");
    EXPECT_THAT(recorder.shown, ElementsAre("You messed up your !!pop"));
}

TEST_F(BangMacros, PopupOfOneOddFieldIsEmpty)
{
    const std::string empty =
        "<a href=\"\" onClick=\"=window.open('', '','width=,height=');.focus()\" target=\"\">";
    for (const char* field : {"about", "HTTP://a", "a.HTM", "a.ASP", "xhttp", " http://a", "a!"}) {
        MessageRecorder one;
        BuildMessages own(one);
        std::string line = std::string("x!!pop[") + field + "]y";
        ExpandPopup(line, 0, page, own);
        EXPECT_EQ(line, "x" + empty + "y");
        EXPECT_THAT(one.shown, ElementsAre(std::string("Something's wrong here: ") + field));
    }
    EXPECT_EQ(page.PopupCounter, 0);
}

TEST_F(BangMacros, MissingBracketTakesTheRestOfTheLine)
{
    EXPECT_EQ(Popup("x !!pop[a.htm and on"), "x " + SimpleAnchor("a.htm and on", "popwin1"));
    EXPECT_THAT(recorder.shown, ElementsAre("Missing closed bracket: a.htm and on"));
    EXPECT_EQ(
        ShowHide("!!showhide[i|t"),
        "<a href=\"javascript:void(0)\" class=\"showhide\" onClick=\"displaySubs('i')\" "
        "onFocus=\"if(this.blur)this.blur()\";>t</a>\r\n<div id=\"i\" style=\"display:none\">");
    EXPECT_EQ(Mailto("x!!mailto[a"), "x");
    EXPECT_EQ(Mailto("!!mailto[a@b.c"),
              "<a href=\"*\" onmouseover=\"this.href='mailto:a'+'@'+'b'+'.'+'c'\">");
    EXPECT_THAT(Swap("!!swap[1|2|3|4|5|6|7"), HasSubstr("alt=\"7\"></a>"));
    EXPECT_THAT(Flash("!!flash[1|2|3"), HasSubstr("src=\"1\">\r\n</object>"));
    // Only the first warning of a build is shown, the others are kept back.
    EXPECT_THAT(recorder.shown, ElementsAre("Missing closed bracket: a.htm and on"));
    EXPECT_THAT(recorder.noted,
                ElementsAre("Missing closed bracket: a.htm and on", "Missing closed bracket: i|t",
                            "Missing closed bracket: a", "Missing closed bracket: a@b.c",
                            "Missing closed bracket: 1|2|3|4|5|6|7",
                            "Missing closed bracket: 1|2|3"));
}

TEST_F(BangMacros, MissingBracketIsReportedBeforeAMissingField)
{
    ExpectSubscript([&] { Popup("!!pop["); }, "!!pop");
    EXPECT_THAT(recorder.shown, ElementsAre("Missing closed bracket: "));
}

TEST_F(BangMacros, MissingFieldsAreFatal)
{
    for (const char* line : {"!!pop[]", "!!pop[a.htm|b.htm]", "!!pop[|]"})
        ExpectSubscript([&] { Popup(line); }, "!!pop");
    for (const char* line : {"!!showhide[]", "!!showhide[id]"})
        ExpectSubscript([&] { ShowHide(line); }, "!!showhide");
    EXPECT_EQ(page.ShowHideIds, "");
    for (const char* line : {"!!swap[]", "!!swap[1|2|3|4|5|6]"})
        ExpectSubscript([&] { Swap(line); }, "!!SWAP");
    for (const char* line : {"!!flash[]", "!!flash[m|1]"})
        ExpectSubscript([&] { Flash(line); }, "!!flash");
    for (const char* line :
         {"!!mailto[a@b]", "!!mailto[a@]", "!!mailto[a.b@c!]", "!!mailto[a@b@c.d]"})
        ExpectSubscript([&] { Mailto(line); }, "!!mailto");
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, ShowHide)
{
    EXPECT_EQ(ShowHide("a !!ShowHide[one|Show one|more] b !!SHOWHIDE[two|]c"),
              "a <a href=\"javascript:void(0)\" class=\"showhide\" onClick=\"displaySubs('one')\" "
              "onFocus=\"if(this.blur)this.blur()\";>Show one</a>\r\n"
              "<div id=\"one\" style=\"display:none\"> b !!SHOWHIDE[two|]c");
    EXPECT_EQ(page.ShowHideIds, "\"one\"");
    EXPECT_EQ(ShowHide("!!SHOWHIDE[two|]c"),
              "<a href=\"javascript:void(0)\" class=\"showhide\" onClick=\"displaySubs('two')\" "
              "onFocus=\"if(this.blur)this.blur()\";></a>\r\n"
              "<div id=\"two\" style=\"display:none\">c");
    EXPECT_EQ(page.ShowHideIds, "\"one\",\"two\"");
}

TEST_F(BangMacros, ShowHideScript)
{
    std::string output = "<p>\r\n";
    WriteShowHideScript(output, page);
    EXPECT_EQ(output, "<p>\r\n"); // no ids, no script

    page.ShowHideIds = "\"one\",\"two\"";
    WriteShowHideScript(output, page);
    EXPECT_EQ(output, "<p>\r\n"
                      "<script type=\"text/javascript\">\r\n"
                      "var subs_array = new Array(\"one\",\"two\");\r\n"
                      "function displaySubs(the_sub){\r\n"
                      "   if (document.getElementById(the_sub).style.display==\"\"){\r\n"
                      "   document.getElementById(the_sub).style.display = \"none\";return\r\n"
                      "  }\r\n"
                      "for (i=0;i<subs_array.length;i++){\r\n"
                      "   var my_sub = document.getElementById(subs_array[i]);\r\n"
                      "   my_sub.style.display = \"none\";\r\n"
                      "   }\r\n"
                      "document.getElementById(the_sub).style.display = \"\";\r\n"
                      "}\r\n"
                      "</script>\r\n"
                      "\r\n");
    EXPECT_EQ(page.ShowHideIds, "");
}

TEST_F(BangMacros, Flv)
{
    const struct {
        const char* server;
        const char* media;
        const char* player;
    } kRows[] = {
        {"kel", "http://k/", "http://k/"},  {"KEL", "http://k/", "http://k/"},
        {"mor", "http://m/", "http://m/"},  {"Mor", "http://m/", "http://m/"},
        {"", "http://k/", "http://m/"}, // neither: media from kel, player from mor
        {"kel ", "http://k/", "http://m/"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Flv(std::string("a!!Flv[") + row.server + "|dir/film|320|240|more]b"),
                  std::string("a<embed flashvars=\"file=") + row.media +
                      "dir/film.flv&autostart=false&image=" + row.media + "dir/film.jpg\" src=\"" +
                      row.player +
                      "flvplayer.swf\" width=\"320\" height=\"240\" bgcolor=\"#FFFFFF\" "
                      "type=\"application/x-shockwave-flash\" pluginspage=\"http://plug/page\">b")
            << row.server;
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, FlvExpandsTheFirstAlone)
{
    EXPECT_EQ(Flv("!!flv[mor|f|1|2] !!FLV[mor|g|3|4]"),
              "<embed flashvars=\"file=http://m/f.flv&autostart=false&image=http://m/f.jpg\" "
              "src=\"http://m/flvplayer.swf\" width=\"1\" height=\"2\" bgcolor=\"#FFFFFF\" "
              "type=\"application/x-shockwave-flash\" pluginspage=\"http://plug/page\"> "
              "!!FLV[mor|g|3|4]");
}

TEST_F(BangMacros, FlawedFlvStays)
{
    for (const char* line : {"a!!flv[kel|f|1]b", "!!flv[]", "!!FLV[kel]"}) {
        MessageRecorder one;
        BuildMessages own(one);
        std::string text = line;
        ExpandFlv(text, 0, addresses, own);
        EXPECT_EQ(text, line);
        EXPECT_THAT(one.noted, ElementsAre("FLV!! is flawed"));
    }
    EXPECT_EQ(Flv("a !!flv[kel|f|1|2 b"), "a !!flv[kel|f|1|2 b");
    EXPECT_THAT(recorder.noted, ElementsAre("Missing closed bracket: kel|f|1|2 b"));
}

TEST_F(BangMacros, Mailto)
{
    const struct {
        const char* line;
        const char* expected;
        const char* why;
    } kRows[] = {
        {"to !!mailto[me@site.org]me</a>!",
         "to <a href=\"*\" onmouseover=\"this.href='mailto:me'+'@'+'site'+'.'+'org'\">me</a>!",
         "open form"},
        {"!!MailTo[a.b@one.two.three!]",
         "<a href=\"*\" onmouseover=\"this.href='mailto:a.b'+'@'+'one'+'.'+'two.three'\">"
         "a.b<!--z-->@<!--z-->one<!--z-->.<!--z-->two.three</a>",
         "closed form, the first label alone is the domain"},
        {"x!!mailto[nobody]y", "xy", "no @: it vanishes without a message"},
        {"x!!mailto[]y", "xy", "no argument: likewise"},
        {"!!mailto[a@b.c@d.e!]",
         "<a href=\"*\" onmouseover=\"this.href='mailto:a'+'@'+'b'+'.'+'c'\">",
         "what follows a second @ is dropped, its ! included"},
        {"!!mailto[a@b.c|x]",
         "<a href=\"*\" onmouseover=\"this.href='mailto:a'+'@'+'b'+'.'+'c|x'\">",
         "a bar means nothing"},
        {"!!mailto[@.!]",
         "<a href=\"*\" onmouseover=\"this.href='mailto:'+'@'+''+'.'+''\">"
         "<!--z-->@<!--z--><!--z-->.<!--z--></a>",
         "empty parts"},
        {"!!mailto[ A@b.c!!]",
         "<a href=\"*\" onmouseover=\"this.href='mailto: A'+'@'+'b'+'.'+'c!'\">"
         " A<!--z-->@<!--z-->b<!--z-->.<!--z-->c!</a>",
         "no trimming, one ! goes"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Mailto(row.line), row.expected) << row.why;
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, Swap)
{
    EXPECT_EQ(Swap("a!!Swap[home|index.htm|off.gif|on.gif|80|20|Go home|more]b"),
              "a<a href=\"index.htm\" onMouseOver=\"document.imagehome.src='on.gif'\" "
              "onMouseOut=\"document.imagehome.src='off.gif'\"><img name=\"imagehome\" "
              "src=\"off.gif\" width=\"80\" height=\"20\" border=\"0\" alt=\"Go home\"></a>b");
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, Flash)
{
    EXPECT_EQ(Flash("a!!FLASH[m.swf|300|200|more]b"),
              "a<object width=\"300\" height=\"200\" codebase=\"http://plug/cab#version=7,0,0,0\" "
              "classid=\"clsid:d27cdb6e-ae6d-11cf-96b8-444553540000\">\r\n"
              "  <param name=\"movie\" value=\"m.swf\">\r\n"
              "  <param name=\"quality\" value=\"high\">\r\n"
              "  <param name=\"allowScriptAccess\" value=\"sameDomain\">\r\n"
              "  <param name=\"bgcolor\" value=\"#ffffff\">\r\n"
              "  <embed pluginspage=\"http://plug/page\" type=\"application/x-shockwave-flash\" "
              "allowscriptaccess=\"sameDomain\" width=\"300\" height=\"200\" bgcolor=\"#ffffff\" "
              "quality=\"high\" src=\"m.swf\">\r\n"
              "</object>b");
    EXPECT_THAT(recorder.noted, IsEmpty());
}

TEST_F(BangMacros, DefaultAddresses)
{
    addresses = Addresses{};
    EXPECT_THAT(Flash("!!flash[m|1|2]"),
                HasSubstr("codebase=\"http://plugin.example.com/player.cab#version=7,0,0,0\""));
    EXPECT_THAT(Flv("!!flv[x|f|1|2]"),
                testing::AllOf(HasSubstr("file=http://kel.example.com/f.flv&"),
                               HasSubstr("src=\"http://mor.example.com/flvplayer.swf\""),
                               HasSubstr("pluginspage=\"http://plugin.example.com/get\"")));
}

TEST_F(BangMacros, OneWarningABuildIsShown)
{
    Popup("!!pop[a|b|c]");
    Flv("!!flv[]");
    EXPECT_THAT(recorder.shown, ElementsAre("You messed up your !!pop"));
    EXPECT_THAT(recorder.noted, ElementsAre("You messed up your !!pop", "FLV!! is flawed"));
    BuildMessages next_build(recorder);
    next_build.ShowBuildMessage("again");
    EXPECT_THAT(recorder.shown, ElementsAre("You messed up your !!pop", "again"));
}

TEST_F(BangMacros, CollectedWarningsGoToTheLog)
{
    recorder.collect_messages = true;
    Popup("!!pop[a|b|c]");
    Popup("!!pop[a|b|c]");
    EXPECT_EQ(recorder.message_log, "You messed up your !!pop<P>");
    EXPECT_THAT(recorder.shown, IsEmpty());
}

TEST_F(BangMacros, LongLinesCostLittle)
{
    const std::string filler(2'000'000, '!');
    const std::string bars(2'000'000, '|');
    EXPECT_EQ(Popup(filler + "!!pop[a.htm]" + filler),
              filler + SimpleAnchor("a.htm", "popwin1") + filler);
    EXPECT_EQ(Mailto(filler + "!!mailto[" + bars + "]" + filler), filler + filler);
    EXPECT_THAT(Flv("!!flv[" + bars + "]"), HasSubstr("flvplayer.swf"));
}

TEST_F(BangMacros, TextsKeptBackAreBounded)
{
    MessageRecorder told;
    BuildMessages own(told);
    const std::string line(1'000'000, 'x');
    for (int i = 0; i < 13; ++i)
        own.ShowBuildMessage(line);
    own.ShowBuildMessage("short");
    ASSERT_EQ(told.noted.size(), 14U);
    EXPECT_EQ(told.shown, std::vector<std::string>{line});
    // The first is shown; eleven more are kept whole, ten millions and the one that passes them.
    EXPECT_EQ(told.noted[11], line);
    EXPECT_EQ(told.noted[12], std::string(200, 'x') + "...");
    EXPECT_EQ(told.noted[13], "short");
}

} // namespace
} // namespace kiv
