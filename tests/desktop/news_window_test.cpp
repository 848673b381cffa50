// The window "News Item", up to the files of a site.
#include "desktop/news_window.h"
#include "desktop/qt_text.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

namespace kiv {

using namespace Qt::StringLiterals;

class NewsWindowTest : public QObject {
    Q_OBJECT

    static QLineEdit& Line(const NewsWindow& window, const char* name)
    {
        return Find<QLineEdit>(window, QString::fromLatin1(name));
    }
    static QPlainTextEdit& Article(const NewsWindow& window)
    {
        return Find<QPlainTextEdit>(window, u"Text7"_s);
    }
    static QRadioButton& Site(const NewsWindow& window, int index)
    {
        return Find<QRadioButton>(window, u"Option1(%1)"_s.arg(index));
    }
    /// The file name and the five header fields, then the lead.
    static QStringList Fields(const NewsWindow& window)
    {
        QStringList texts;
        for (const char* const name :
             {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6", "Text8"})
            texts << Line(window, name).text();
        return texts;
    }
    static void Type(const NewsWindow& window, const char* name, const QString& text)
    {
        Line(window, name).clear();
        QTest::keyClicks(&Line(window, name), text);
    }

    static void PutSettings(SideWindowDesk& desk)
    {
        desk.Put("utils/kivnews.ini", "Harbour & sea|harbour|hb|Check the map|home|x\r\n"
                                      "|C:\\temp|scratch|\r\n"
                                      "=ht|Harbour Times\r\n"
                                      "*Old Pier\r\n");
    }
    /// The site of the first option, ready for news.
    static void PutSite(SideWindowDesk& desk)
    {
        PutSettings(desk);
        desk.PutFolder("internet/harbour/txt");
        desk.Put("internet/harbour/_html.txt", "head\r\n;inserthere1\r\n;inserthere2\r\n"
                                               "@file = old\r\n@title = Old\r\n@@EOY\r\n\r\n"
                                               "tail\r\n");
        desk.Put("internet/home/_html.txt", "home\r\n;inserthere1\r\nolder\r\n");
        desk.Run([] {});
    }
    static void FillIn(const NewsWindow& window)
    {
        Type(window, "Text1", u"ht040504b"_s);
        Type(window, "Text3", u"Boats & nets"_s);
        Type(window, "Text5", u"A. Hand"_s);
        Type(window, "Text6", u"At sea"_s);
        Type(window, "Text8", u"Fog lifts."_s);
        Article(window).setPlainText(u"Line one \u00e9\nOld Pier"_s);
        Find<QCheckBox>(window, u"Check1"_s).click();
    }

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        NewsWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(window.windowTitle(), u"News Item"_s);
        const std::pair<QString, QString> kButtons[] = {{u"Command1"_s, u"Do It!"_s},
                                                        {u"Command2"_s, u"Abort"_s},
                                                        {u"Command3"_s, u"Clear"_s},
                                                        {u"Command4"_s, u"Grab source"_s},
                                                        {u"Command6"_s, u"Show Source String"_s},
                                                        {u"Command7"_s, u"Today"_s}};
        for (const auto& [name, caption] : kButtons)
            QCOMPARE(Seen(Find<QPushButton>(window, name).text()), caption);
        QCOMPARE(Seen(Find<QCheckBox>(window, u"Check1"_s).text()), u"Text is single spaced"_s);
        QCOMPARE(Seen(Find<QCheckBox>(window, u"Check2"_s).text()), u"Text as is"_s);
        QCOMPARE(Find<QGroupBox>(window, u"Website"_s).title(), u"Website"_s);
        QCOMPARE(Faults(window), QString());
        QVERIFY(!window.isModal());
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(TabOrder(window, u"Text1"_s),
                 (QStringList{u"Text1"_s, u"Command7"_s, u"Text2"_s, u"Text3"_s, u"Text4"_s,
                              u"Text5"_s, u"Text6"_s, u"Option1(0)"_s, u"Option1(1)"_s, u"Text8"_s,
                              u"Text7"_s, u"Check1"_s, u"Check2"_s, u"Command4"_s, u"Command6"_s,
                              u"Command3"_s, u"Command1"_s, u"Command2"_s}));
    }

    void FieldsHaveTheirCaptions()
    {
        SideWindowDesk desk;
        NewsWindow window(desk, nullptr);
        QStringList pairs;
        for (const QLabel* const label : window.findChildren<QLabel*>())
            if (label->buddy() != nullptr)
                pairs << label->buddy()->objectName() + u' ' + Seen(label->text());
        pairs.sort();
        QCOMPARE(pairs,
                 (QStringList{u"Text1 Name of .txt file:"_s, u"Text2 Date"_s, u"Text3 Title"_s,
                              u"Text4 Newspaper"_s, u"Text5 Byline"_s, u"Text6 subhead"_s,
                              u"Text7 Article text"_s, u"Text8 Lead sentence"_s}));
    }

    void EighteenOptionsAndTheUnusedHidden()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        for (int i = 0; i < 18; ++i)
            QCOMPARE(Site(window, i).isVisible(), i < 2);
        QCOMPARE(Seen(Site(window, 0).text()), u"Harbour & sea"_s);
        QCOMPARE(Seen(Site(window, 1).text()), u"scratch"_s); // the tag, there is no label
        QVERIFY(window.findChild<QRadioButton*>(u"Option1(18)"_s) == nullptr);
        QCOMPARE(Faults(window), QString());

        window.hide();
        desk.Put("utils/kivnews.ini", "Another|x\r\n");
        window.BringUp();
        QCOMPARE(Seen(Site(window, 0).text()), u"Another"_s);
        QVERIFY(!Site(window, 1).isVisible());
    }

    void AllEighteenAreUsable()
    {
        SideWindowDesk desk;
        std::string settings;
        for (int i = 1; i <= 18; ++i)
            settings += "Site " + std::to_string(i) + "|s|t|Note " + std::to_string(i) + "\r\n";
        desk.Put("utils/kivnews.ini", settings);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        for (int i = 0; i < 18; ++i) {
            QVERIFY(Site(window, i).isVisible());
            Site(window, i).click();
            QCOMPARE(Find<QLabel>(window, u"reminder"_s).text(), u"Note %1"_s.arg(i + 1));
        }
        QCOMPARE(Faults(window), QString());
    }

    void NineteenSitesAreAFatalError()
    {
        SideWindowDesk desk;
        std::string settings;
        for (int i = 1; i <= 19; ++i)
            settings += "s|s\r\n";
        desk.Put("utils/kivnews.ini", settings);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(desk.words.shown,
                 Texts{"more than 18 news sites\r\nc:\\utils\\kivnews.ini, line 19\r\n"
                       "There is room for 18: take one out, or put \";\" before its line."});
        QVERIFY(window.isVisible());
    }

    void ReminderStandsInTheFrame()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        auto& reminder = Find<QLabel>(Find<QGroupBox>(window, u"Website"_s), u"reminder"_s);
        QCOMPARE(reminder.text(), QString());
        Site(window, 0).click();
        QCOMPARE(reminder.text(), u"Check the map"_s);
        Site(window, 1).click();
        QCOMPARE(reminder.text(), QString());
        QVERIFY(desk.words.shown.empty());
    }

    void TypingANameFillsDateAndNewspaper()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Line(window, "Text2").setText(u"some day"_s);
        Line(window, "Text4").setText(u"some paper"_s);
        Type(window, "Text1", u"ht0405"_s); // no code yet
        QCOMPARE(Line(window, "Text2").text(), u"some day"_s);
        QCOMPARE(Line(window, "Text4").text(), u"some paper"_s);
        Type(window, "Text1", u"ht040569b"_s);
        QCOMPARE(Line(window, "Text1").text(), u"ht040569b"_s);
        QCOMPARE(Line(window, "Text2").text(), u"April 5, 2069"_s);
        QCOMPARE(Line(window, "Text4").text(), u"Harbour Times"_s);
        Type(window, "Text1", u"proc123170"_s);
        QCOMPARE(Line(window, "Text2").text(), u"December 31, 1970"_s);
        QCOMPARE(Line(window, "Text4").text(), u"Proclamation"_s);
        Type(window, "Text1", u"zz010104"_s); // a code that nobody knows
        QCOMPARE(Line(window, "Text2").text(), u"January 1, 2004"_s);
        QCOMPARE(Line(window, "Text4").text(), u"Proclamation"_s);
    }

    void TypingInsideANameKeepsTheCaret()
    {
        SideWindowDesk desk;
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Type(window, "Text1", u"p040504"_s);
        Line(window, "Text1").setCursorPosition(1);
        QTest::keyClicks(&Line(window, "Text1"), u"r"_s);
        QCOMPARE(Line(window, "Text1").text(), u"pr040504"_s);
        QCOMPARE(Line(window, "Text1").cursorPosition(), 2);
        QCOMPARE(Line(window, "Text4").text(), u"Press Release"_s);
    }

    void TodayIsTheNameAndTheDate()
    {
        SideWindowDesk desk;
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Type(window, "Text1", u"before"_s);
        Press(window, u"Command7"_s);
        QCOMPARE(Line(window, "Text1").text(), u"030504"_s);
        QCOMPARE(Line(window, "Text2").text(), u"March 5, 2004"_s);
    }

    void GrabSourceFillsTheHeader()
    {
        SideWindowDesk desk;
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Type(window, "Text8", u"kept"_s);
        QGuiApplication::clipboard()->setText(
            u"!!1[May 1, 2004|ht050104|Caf\u00e9s| B. Line |The Sun]\r\nmore"_s);
        Press(window, u"Command4"_s);
        QCOMPARE(Fields(window), (QStringList{u"ht050104"_s, u"May 1, 2004"_s, u"Caf\u00e9s"_s,
                                              u"The Sun"_s, u"B. Line"_s, u""_s, u"kept"_s}));
    }

    void ShowSourceStringShowsTheHeader()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        FillIn(window);
        Press(window, u"Command6"_s);
        QCOMPARE(desk.words.shown,
                 Texts{"April 5, 2004|ht040504b|Boats & nets|A. Hand|Harbour Times|At sea"});
    }

    void WritesTheThreeFiles()
    {
        SideWindowDesk desk;
        PutSite(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 0).click();
        FillIn(window);
        Press(window, u"Command1"_s);
        QCOMPARE(desk.error, std::string());
        QVERIFY(desk.words.shown.empty());

        const std::string header =
            "[April 5, 2004|ht040504b|Boats & nets|A. Hand|Harbour Times|At sea]\r\n";
        const test::FileTree expected = {
            {"harbour/txt/ht040504b.txt",
             "<p> <b>Fog lifts.</b></P>\r\n<P>Line one &eacute;</P>\r\n"
             "<P><span class=\"highlighter\">Old Pier</span></p>\r\n"},
            {"harbour/_html.txt", "head\r\n;inserthere1\r\n!!1" + header +
                                      ";inserthere2\r\n"
                                      "@file = ht040504b\r\n@title = Boats & nets\r\n!!2" +
                                      header +
                                      "++txt\\ht040504b.txt\r\n@@EOY\r\n\r\n"
                                      "@file = old\r\n@title = Old\r\ntail\r\n"},
            {"home/_html.txt", "home\r\n;inserthere1\r\n!!1" + header + "older\r\n"}};
        QCOMPARE(test::Differences(expected, desk.Tree("internet")), std::string());

        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\internet\\harbour\\"));
        const std::string editor = desk.workspace().EditorCommand;
        QCOMPARE(desk.programs.Launched(),
                 (Texts{editor + "C:\\internet\\harbour\\txt\\ht040504b.txt",
                        editor + "C:\\internet\\harbour\\_html.txt",
                        editor + "C:\\internet\\home\\_html.txt"}));
        QVERIFY(window.isVisible());
        QCOMPARE(Line(window, "Text3").text(), u"Boats & nets"_s); // the fields are kept
    }

    void ExistingArticleIsNeverOverwritten()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("internet/harbour/txt/ht040504b.txt", "mine");
        const test::FileTree before = desk.Tree("");
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 0).click();
        FillIn(window);
        Press(window, u"Command1"_s);
        QCOMPARE(desk.words.shown, Texts{"That file already exists. Try Again."});
        QCOMPARE(test::Differences(before, desk.Tree("")), std::string());
    }

    void TextAsIsGoesByteForByte()
    {
        SideWindowDesk desk;
        PutSite(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 1).click(); // the scratch site makes its folders
        Type(window, "Text1", u"a"_s);
        Article(window).setPlainText(u"  one\u00a0two \u00e9\r\n\r\n<b>\u201cthree\u201d\n"_s);
        Find<QCheckBox>(window, u"Check2"_s).click();
        desk.Put("temp/_html.txt", ";inserthere1\r\n");
        Press(window, u"Command1"_s);
        QCOMPARE(desk.error, std::string());
        QCOMPARE(desk.Content("temp/txt/a.txt"),
                 std::string("  one\xa0two \xe9\r\n\r\n<b>\x93three\x94\r\n"));
    }

    void FieldsOfOneLineHoldOneLine()
    {
        SideWindowDesk desk;
        NewsWindow window(desk, nullptr);
        window.BringUp();
        QGuiApplication::clipboard()->setText(u"Boats\r\nand nets\n"_s);
        Line(window, "Text3").paste();
        Press(window, u"Command6"_s);
        QCOMPARE(desk.words.shown, Texts{"||Boats and nets |||"});
    }

    void MissingChoicesAreNamed()
    {
        SideWindowDesk desk;
        PutSite(desk);
        const test::FileTree before = desk.Tree("");
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Press(window, u"Command1"_s);
        QCOMPARE(desk.words.shown,
                 (Texts{"Choose a Website", "Finish filling in the information"}));
        Site(window, 0).click();
        Press(window, u"Command1"_s);
        QCOMPARE(desk.words.shown.back(), std::string("Finish filling in the information"));
        QCOMPARE(desk.words.shown.size(), std::size_t{3});
        QCOMPARE(test::Differences(before, desk.Tree("")), std::string());
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\site\\"));
    }

    void MissingSiteFolderIsAFatalError()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 0).click();
        FillIn(window);
        Press(window, u"Command1"_s);
        QCOMPARE(desk.error, std::string("file"));
        QVERIFY(window.isVisible());
        QCOMPARE(Line(window, "Text1").text(), u"ht040504b"_s);
    }

    void ClearEmptiesFieldsAndBoxesAndKeepsTheSite()
    {
        SideWindowDesk desk;
        PutSettings(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 0).click();
        FillIn(window);
        Find<QCheckBox>(window, u"Check2"_s).click();
        Press(window, u"Command3"_s);
        for (const QString& text : Fields(window))
            QCOMPARE(text, QString());
        QCOMPARE(FieldText(Article(window)), std::string());
        QVERIFY(!Find<QCheckBox>(window, u"Check1"_s).isChecked());
        QVERIFY(!Find<QCheckBox>(window, u"Check2"_s).isChecked());
        QVERIFY(Site(window, 0).isChecked());
    }

    void AbortAndEscapeCloseAndLoseNothing()
    {
        SideWindowDesk desk;
        PutSite(desk);
        const test::FileTree before = desk.Tree("");
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 0).click();
        FillIn(window);
        Press(window, u"Command2"_s);
        QVERIFY(!window.isVisible());
        QCOMPARE(test::Differences(before, desk.Tree("")), std::string());
        window.BringUp();
        QCOMPARE(Line(window, "Text3").text(), u"Boats & nets"_s);
        QTest::keyClick(&Line(window, "Text3"), Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }

    void EnterWritesNothingUnlessOnTheButton()
    {
        SideWindowDesk desk;
        PutSite(desk);
        const test::FileTree before = desk.Tree("");
        NewsWindow window(desk, nullptr);
        window.BringUp();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        Site(window, 0).click();
        FillIn(window);
        Line(window, "Text5").setFocus();
        QTest::keyClick(&Line(window, "Text5"), Qt::Key_Return);
        QCOMPARE(window.focusWidget(), &Line(window, "Text6")); // on to the next field
        QCOMPARE(test::Differences(before, desk.Tree("")), std::string());
        auto& do_it = Find<QPushButton>(window, u"Command1"_s);
        do_it.setFocus();
        QTest::keyClick(&do_it, Qt::Key_Return);
        QVERIFY(std::filesystem::exists(desk.Native("internet/harbour/txt/ht040504b.txt")));
    }

    void ReadsTheSitesAgainAtDoIt()
    {
        SideWindowDesk desk;
        PutSite(desk);
        NewsWindow window(desk, nullptr);
        window.BringUp();
        Site(window, 1).click();
        desk.Put("utils/kivnews.ini", "Only one|harbour\r\n");
        FillIn(window);
        Press(window, u"Command1"_s);
        QCOMPARE(desk.words.shown, Texts{"Choose a Website"});
        QVERIFY(!Site(window, 1).isVisible());
        QVERIFY(!Site(window, 1).isChecked());
    }
};

const WindowTestOf<NewsWindowTest> news_window("news");

} // namespace kiv

#include "news_window_test.moc"
