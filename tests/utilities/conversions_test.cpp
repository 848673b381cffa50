#include "utilities/conversions.h"

#include "tests/utilities/utility_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr const char* kScratch = "$$$x.txt";

/// The button's effect on the clipboard.
std::string Press(UtilityDesk& desk, ConversionWindow& window, const std::string& text)
{
    desk.clipboard.SetText(text);
    DoConversion(desk.machine, window, "me@here.org");
    return desk.clipboard.Text();
}

ConversionWindow WindowIn(std::string_view mode)
{
    ConversionWindow window;
    SetMode(window, mode);
    return window;
}

TEST(Conversions, EachModeHasItsTitle)
{
    const std::pair<std::string, std::string> kTitles[] = {
        {"", "Convert to html"},
        {"rs", "Write to rs"},
        {"js", "Write to js"},
        {"getnames", "Extract Name fields"},
        {"cleanquotes", "Clean Quotes, etc."},
        {"newsgrabber", "News Grabber"},
        {"tabtopipe", "Tabs to Pipes"},
    };
    EXPECT_EQ(ConversionModes().size(), std::size(kTitles));
    for (const auto& [mode, title] : kTitles) {
        ConversionWindow window;
        for (const ConversionBox& box : kConversionBoxes)
            window.boxes.*box.box = true;
        window.text_field = "kept";
        SetMode(window, mode);
        EXPECT_EQ(window.mode, mode);
        EXPECT_EQ(window.caption, title);
        EXPECT_EQ(window.label, title);
        EXPECT_EQ(window.text_field, "kept");
        for (const ConversionBox& box : kConversionBoxes)
            EXPECT_FALSE(window.boxes.*box.box) << box.caption;
    }
}

TEST(Conversions, CaptionsOfTheBoxes)
{
    using testing::Field;
    EXPECT_THAT(kConversionBoxes,
                ElementsAre(Field(&ConversionBox::caption, "No <p> (links list)"),
                            Field(&ConversionBox::caption, "Single spaced"),
                            Field(&ConversionBox::caption, "Poetry (br &&& p)"),
                            Field(&ConversionBox::caption, "keep smart qutoes"),
                            Field(&ConversionBox::caption, "Poetry (br &&& br-br)")));
}

TEST(Conversions, ARunResetsTheWindow)
{
    UtilityDesk desk;
    ConversionWindow window = WindowIn("");
    for (const ConversionBox& box : kConversionBoxes)
        window.boxes.*box.box = true;
    window.text_field = "kept";
    Press(desk, window, "a");
    EXPECT_EQ(window.caption, "Prepare for Web Use");
    EXPECT_EQ(window.label, "");
    EXPECT_EQ(window.mode, "");
    EXPECT_EQ(window.text_field, "kept");
    EXPECT_FALSE(window.boxes.links_list);
    EXPECT_FALSE(window.boxes.single_spaced);
    EXPECT_TRUE(window.boxes.poetry_p);
    EXPECT_TRUE(window.boxes.keep_smart_quotes);
    EXPECT_TRUE(window.boxes.poetry_br);
}

TEST(Conversions, EachModeConvertsTheClipboard)
{
    struct Row {
        std::string mode, text, result;
    };
    const Row kRows[] = {
        {"", "a\r\nb", "<p> a b</p>\r\n"},
        {"no such mode", "a\r\nb", "<p> a b</p>\r\n"},
        {"rs", "a\tb", "a=rs(\"a\")\r\n\tb=rs(\"b\")\r\n"},
        {"js", "a",
         "<script src=\"_player.js\"></script>\r\n\r\n"
         "<!---- write the following to _player.js ----->\r\ndocument.write('a');\r\n"},
        {"getnames", "name=\"a\"",
         "@FORMREAD:a\r\n<%if imempty=\"yes\" then%>\r\n"
         "<h3>Oops! The form was empty. Use your back button.</h3>\r\n<% else %>\r\n"
         "@SENDEMAIL:Subject|email|me@here.org|messageout\r\n<% end if %>"},
        {"cleanquotes", "\x91", "'\r\n"},
        {"newsgrabber", "!!1[d|f|t|x]",
         "@file = f\r\n@title = t\r\n!!2[d|f|t|x]\r\n++txt\\f.txt\r\n\r\n@@EOY\r\n\r\n"},
        {"tabtopipe", "a\tb", "<table width=\"100%\">\r\npre[a|b]\r\n</table>"},
    };
    for (const Row& row : kRows) {
        UtilityDesk desk;
        ConversionWindow window = WindowIn(row.mode);
        window.text_field = "pre";
        EXPECT_EQ(Press(desk, window, row.text), row.result) << row.mode;
        EXPECT_EQ(window.caption, "Prepare for Web Use");
        EXPECT_THAT(desk.reporter.shown, IsEmpty());
        EXPECT_THAT(desk.reporter.statuses, IsEmpty());
    }
}

TEST(Conversions, AnEmptyClipboardIsNothingToReport)
{
    const std::pair<std::string, std::string> kResults[] = {
        {"", "<p></p>\r\n"},
        {"rs", ""},
        {"cleanquotes", ""},
        {"tabtopipe", "<table width=\"100%\">\r\n</table>"},
    };
    for (const auto& [mode, result] : kResults) {
        UtilityDesk desk;
        ConversionWindow window = WindowIn(mode);
        EXPECT_EQ(Press(desk, window, ""), result) << mode;
        EXPECT_THAT(desk.reporter.shown, IsEmpty());
    }
}

TEST(Conversions, ScratchFile)
{
    struct Row {
        std::string mode, text;
        bool written;
        std::string left; // what stays in the file
    };
    const Row kRows[] = {
        {"", "a\n\xE9", true, ""},
        {"cleanquotes", "a\n\xE9", true, "a\n\xE9"}, // as it stands, no line end added
        {"tabtopipe", "a\r\nb\n", true, "a\r b "},
        {"rs", "a", false, ""},
        {"js", "a", false, ""},
        {"getnames", "a", false, ""},
        {"newsgrabber", "!!1|a|b", false, ""},
    };
    for (const Row& row : kRows) {
        UtilityDesk desk;
        ConversionWindow window = WindowIn(row.mode);
        Press(desk, window, row.text);
        if (row.written)
            EXPECT_THAT(desk.machine.files.Written(), ElementsAre("C:\\$$$x.txt")) << row.mode;
        else
            EXPECT_THAT(desk.machine.files.Written(), IsEmpty()) << row.mode;
        EXPECT_EQ(desk.Exists(kScratch), !row.left.empty()) << row.mode;
        EXPECT_EQ(desk.Content(kScratch), row.left) << row.mode;
    }
}

TEST(Conversions, CleanQuotesReadsItsBox)
{
    UtilityDesk desk;
    ConversionWindow window = WindowIn("cleanquotes");
    window.boxes.keep_smart_quotes = true;
    EXPECT_EQ(Press(desk, window, "\x93"), "&ldquo;\r\n");
}

TEST(Conversions, ARefusedNewsLineLeavesTheClipboard)
{
    for (const char* text : {"", "not a news line"}) {
        UtilityDesk desk;
        ConversionWindow window = WindowIn("newsgrabber");
        window.boxes.single_spaced = true;
        EXPECT_EQ(Press(desk, window, text), text);
        EXPECT_THAT(desk.reporter.shown, ElementsAre("First line doesn't start '!!'"));
        EXPECT_EQ(window.caption, "Prepare for Web Use");
        EXPECT_FALSE(window.boxes.single_spaced);
        EXPECT_EQ(Convert(desk.machine, window, "", text), std::nullopt);
    }
}

TEST(Conversions, AFatalErrorLeavesTheClipboard)
{
    UtilityDesk desk;
    ConversionWindow names = WindowIn("getnames");
    EXPECT_EQ(KindOf([&] { Press(desk, names, "name="); }), "invalid-argument");
    EXPECT_EQ(desk.clipboard.Text(), "name=");
    ConversionWindow news = WindowIn("newsgrabber");
    EXPECT_EQ(KindOf([&] { Press(desk, news, "!!1[a|b]"); }), "subscript");
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

TEST(Conversions, WithoutAClipboard)
{
    UtilityDesk desk;
    EXPECT_THAT(Convert(desk.machine, WindowIn("rs"), "", "a"),
                Optional(std::string("a=rs(\"a\")\r\n")));
}

} // namespace
} // namespace kiv
