// What is added to a page when it is served.
#include "preview/made_pages.h"
#include "preview/marked_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "text/text.h"

namespace kiv {
namespace {

const PageScript kScript{"http://o", "r", "s", "3", "/a.htm"};

/// The page with `@` for the mark's name and `$` for the script.
std::string Marked(std::string_view html)
{
    std::string marked = MarkedPage(html, kScript);
    ReplaceEach(marked, " data-kiv-at=", "@");
    ReplaceEach(marked, ScriptElement(kScript), "$");
    ReplaceEach(marked, "\"", "");
    return marked;
}

std::string WithoutScript(std::string marked)
{
    EXPECT_EQ(std::ranges::count(marked, '$'), 1) << marked;
    std::erase(marked, '$');
    return marked;
}

TEST(MarkedPage, TagsHaveTheirLineAndColumn)
{
    EXPECT_EQ(Marked("<p>one\r\n<p class=x>t<b>wo</b>\n\n <br/>\n"),
              "$<p@1:1>one\r\n<p@2:1 class=x>t<b@2:13>wo</b>\n\n <br@4:2/>\n");
    EXPECT_EQ(Marked("<H1>x</H1><svg><path d=1></svg>"),
              "$<H1@1:1>x</H1><svg@1:11><path@1:16 d=1></svg>");
}

TEST(MarkedPage, AMegabyteInOneLine)
{
    constexpr int kTags = 50'000; // of twenty bytes each, with what stands behind
    const std::string behind = ">x" + std::string(15, ' ');
    std::string html = "\n";
    std::string marked = "\n$";
    for (int i = 0; i < kTags; ++i) {
        html += "<b" + behind + "\t";
        marked += "<b@2:" + std::to_string(i * 20 + 1) + behind + "\t";
    }
    EXPECT_TRUE(Marked(html + "\n<i>") == marked + "\n<i@3:1>"); // too long to be printed
}

TEST(MarkedPage, TheHeadStaysAsItIsAndGetsTheScript)
{
    EXPECT_EQ(Marked("<!DOCTYPE html><html><head><meta charset=utf-8><title>a<b></title></head>"
                     "<body><p></body></html>"),
              "<!DOCTYPE html><html><head><meta charset=utf-8><title>a<b></title>$</head>"
              "<body@1:74><p@1:80></body></html>");
    EXPECT_EQ(Marked("<html><title>x</title><body bgcolor=red>"),
              "<html><title>x</title>$<body@1:23 bgcolor=red>");
    EXPECT_EQ(Marked("<html><frameset cols=1><frame src=a></frameset></html>"),
              "<html>$<frameset cols=1><frame@1:24 src=a></frameset></html>");
}

TEST(MarkedPage, WhatIsNoTagIsNotMarked)
{
    for (const std::string_view html : {"",
                                        "text",
                                        "a < b",
                                        "<>",
                                        "< p>",
                                        "<1>",
                                        "<!-- <p> -->",
                                        "<!--><!-->",
                                        "<!-- <p>",
                                        "<!-- -- <p> --!>",
                                        "<% Response.Write('<p>') %>",
                                        "<?php echo '<p>'; ?>",
                                        "<% <p>",
                                        "<?xml version='1.0'?>",
                                        "<script>if (a<b) '<p>'</script>",
                                        "<SCRIPT>'<p>'</Script >",
                                        "<script>'</scripts><p>'</script>",
                                        "<style>p<b{}</style>",
                                        "<title><p></title>",
                                        "<!DOCTYPE html [<p>",
                                        "</p><",
                                        "</",
                                        "<script>never ends <p>"})
        EXPECT_EQ(WithoutScript(Marked(html)), html);
}

TEST(MarkedPage, TheScriptStandsWhereNothingThatIsCutOffTakesItAlong)
{
    EXPECT_EQ(Marked("<p>one<a href=\"x"), "$<p@1:1>one<a@1:7 href=x");
    EXPECT_EQ(Marked("text<p>one<!-- "), "text$<p@1:5>one<!-- ");
    EXPECT_EQ(Marked("<html><meta charset=utf-8><title>x"), "<html><meta charset=utf-8>$<title>x");
    EXPECT_EQ(Marked("<html><head><style>p{"), "<html><head>$<style>p{");
    EXPECT_EQ(Marked("<!doctype html>\n<!-- <p>"), "<!doctype html>$\n<!-- <p>");
    EXPECT_EQ(Marked("<!-- <p>"), "$<!-- <p>");
    EXPECT_EQ(Marked("text<a href='x"), "text$<a@1:5 href='x");
    EXPECT_EQ(Marked("<!DOCTYPE html"), "<!DOCTYPE html$");
    EXPECT_EQ(Marked("</p>text<"), "$</p>text<");
    EXPECT_EQ(Marked(""), "$");
}

TEST(MarkedPage, APolicyLetsTheScriptIn)
{
    const auto policy = [](const std::string& content) {
        return "<meta http-equiv=content-security-policy content='" + content + "'>";
    };
    const auto loosened = [&](const std::string& before, const std::string& after) {
        EXPECT_EQ(Marked(policy(before) + "<p>"),
                  policy(after) + "$<p@1:" + std::to_string(policy(before).size() + 1) + ">");
    };
    loosened("script-src &#39;none&#39;", "script-src http://o/.kiv/");
    loosened("script-src &#39;self&#39; http://a/",
             "script-src &#39;self&#39; http://a/ http://o/.kiv/");
    loosened("default-src &apos;NONE&apos;;img-src *", "default-src http://o/.kiv/;img-src *");
    loosened("img-src *; Connect-Src a.example", "img-src *;Connect-Src a.example http://o/.kiv/");
    loosened(
        "script-src &#39;strict-dynamic&#39; &#39;nonce-x&#39;",
        "script-src &#39;strict-dynamic&#39; &#39;nonce-x&#39; http://o/.kiv/ &#39;nonce-r&#39;");
    loosened("style-src &#39;none&#39;", "style-src &#39;none&#39;");
    EXPECT_EQ(
        Marked("<META CONTENT = \"script-src 'none'\" http-equiv = \"Content-Security-Policy\" />"),
        "<META CONTENT = script-src http://o/.kiv/ http-equiv = Content-Security-Policy />$");
    EXPECT_EQ(Marked("<meta http-equiv=refresh content=\"script-src 'none'\">"),
              "<meta http-equiv=refresh content=script-src 'none'>$");
    EXPECT_EQ(Marked("<meta http-equiv=content-security-policy>"),
              "<meta http-equiv=content-security-policy>$");
}

TEST(MarkedPage, ElementsThatHoldTextAreMarkedAndTheirTextIsNot)
{
    EXPECT_EQ(Marked("<textarea><p></textarea><p>"), "$<textarea@1:1><p></textarea><p@1:25>");
    EXPECT_EQ(Marked("<xmp><p></xmp>"), "$<xmp@1:1><p></xmp>");
    EXPECT_EQ(Marked("<plaintext><p>"), "$<plaintext@1:1><p>");
}

TEST(MarkedPage, ValuesMayHoldAnything)
{
    EXPECT_EQ(Marked("<a title='<p>' href=x>y"), "$<a@1:1 title='<p>' href=x>y");
    EXPECT_EQ(Marked("<a title=\">\"><b>"), "$<a@1:1 title=>><b@1:14>");
    EXPECT_EQ(Marked("<a href=\"<%=x%>\"><b>"), "$<a@1:1 href=<%=x%>><b@1:18>");
    EXPECT_EQ(Marked("<a title='never ends><b>"), "$<a@1:1 title='never ends><b>");
    EXPECT_EQ(Marked("<a\nhref=x>\n<b>"), "$<a@1:1\nhref=x>\n<b@3:1>");
}

TEST(MarkedPage, BytesStayWhatTheyAre)
{
    EXPECT_EQ(Marked("<p>\xE9\x80\xFF\0</p>"), "$<p@1:1>\xE9\x80\xFF");
    const std::string wide("\xFF\xFE<\0p\0>\0", 8);
    EXPECT_EQ(MarkedPage(wide, kScript), wide);
}

TEST(MarkedPage, TheScriptKnowsItsPage)
{
    EXPECT_EQ(
        ScriptElement({"http://localhost:1", "1f", "2e", "7", "/s/a \"b\"<&%\xC3\xA9\xFF.htm"}),
        "<script src=\"http://localhost:1/.kiv/live.js\" nonce=\"1f\" data-run=\"1f\" "
        "data-secret=\"2e\" "
        "data-version=\"7\" "
        "data-page=\"/s/a%20%22b%22%3C%26%25%C3%A9%FF.htm\"></script>");
}

TEST(MadePages, TextOfAScriptPageIsTextAndHasItsLines)
{
    const std::string page = ScriptPage("g.asp", "<% x %>\r\n\xE9&\r\n", "$");
    EXPECT_THAT(page, testing::HasSubstr("<pre><span data-kiv-at=\"1:1\">&lt;% x %&gt;</span>"
                                         "<span data-kiv-at=\"2:1\">\xE9&amp;</span></pre>"));
    EXPECT_THAT(page, testing::HasSubstr("g.asp holds script that the web server runs."));
}

TEST(MadePages, NamesInAListAreTextAndAddresses)
{
    Served folder;
    folder.names = {"a&b"};
    folder.entries = {{"<x>.gif", false}, {"a:b.htm", false}, {"sub", true}};
    const std::string page = FolderPage(folder, "");
    EXPECT_THAT(page, testing::HasSubstr("<h1>/a&amp;b</h1>"));
    EXPECT_THAT(page, testing::HasSubstr("<li><a href=\"../\">../</a></li>\n"
                                         "<li><a href=\"./sub/\">sub/</a></li>\n"
                                         "<li><a href=\"./%3Cx%3E.gif\">&lt;x&gt;.gif</a></li>\n"
                                         "<li><a href=\"./a:b.htm\">a:b.htm</a></li>\n"));
}

TEST(MadePages, WhatIsMissingLeadsToTheNearest)
{
    Served missing;
    missing.names = {"A.htm"};
    missing.nearest = {"a.htm"};
    EXPECT_THAT(MissingPage(missing, ""),
                testing::HasSubstr("<p>Was this meant: <a href=\"/a.htm\">/a.htm</a>?</p>"));
    missing.differs_in_case = true;
    EXPECT_THAT(MissingPage(missing, ""),
                testing::HasSubstr("<p>But there is <a href=\"/a.htm\">/a.htm</a>. Most servers "
                                   "tell small letters from capitals in names, too.</p>"));
}

} // namespace
} // namespace kiv
