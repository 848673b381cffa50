// The tab "Why": the lines of a page and the story of one.
#include "desktop/story_pane.h"
#include "desktop/story_view.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QToolButton>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class StoryWindowTest : public QObject {
    Q_OBJECT

    /// Two pages; line 1 of each is made of the template's first line by a variable.
    static void PutSite(const SideWindowDesk& desk)
    {
        desk.Put("site/_template.txt", "<b>@TITLE</b>\r\n<!--BODY HERE-->\r\n");
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = One & <i>\r\nHello\r\n"
                                   "@FILE = b\r\n@TITLE = Two\r\nBye\r\nhello\r\n");
    }
    static QComboBox& Pages(const QWidget& window) { return Find<QComboBox>(window, u"page"_s); }
    static QTreeView& Lines(const QWidget& window) { return Find<QTreeView>(window, u"lines"_s); }
    static StoryView& Story(const QWidget& window) { return Find<StoryView>(window, u"story"_s); }
    static QStringList PageNames(const QWidget& window)
    {
        QStringList names;
        for (int i = 0; i < Pages(window).count(); ++i)
            names << Pages(window).itemText(i);
        return names;
    }
    /// "number|source|text" of each line that is shown.
    static QStringList Rows(const QWidget& window)
    {
        const QAbstractItemModel& model = *Lines(window).model();
        QStringList rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                cells << model.index(row, column).data().toString();
            rows << cells.join(u'|');
        }
        return rows;
    }
    static void ChooseLine(const QWidget& window, int row)
    {
        QTreeView& lines = Lines(window);
        lines.setCurrentIndex(lines.model()->index(row, 0));
    }
    /// The paragraphs of the story, their lines parted by "/".
    static QStringList Paragraphs(const QWidget& window)
    {
        QStringList paragraphs;
        for (QTextBlock block = Story(window).document()->begin(); block.isValid();
             block = block.next()) {
            QString text = block.text();
            while (text.endsWith(QChar::LineSeparator))
                text.chop(1);
            paragraphs << text.replace(QChar::LineSeparator, u'/');
        }
        return paragraphs;
    }
    /// The pieces of the story that have a background of their own.
    static QStringList Marked(const QWidget& window)
    {
        QStringList marked;
        for (QTextBlock block = Story(window).document()->begin(); block.isValid();
             block = block.next())
            for (auto at = block.begin(); !at.atEnd(); ++at)
                if (at.fragment().charFormat().background().style() != Qt::NoBrush)
                    marked << at.fragment().text();
        return marked;
    }
    static QString Trouble(const QWidget& window)
    {
        const QLabel& label = Find<QLabel>(window, u"trouble"_s);
        return label.isVisible() ? label.text() : QString();
    }
    static void DoubleClickParagraph(const QWidget& window, int number)
    {
        StoryView& story = Story(window);
        QTextCursor cursor(story.document()->findBlockByNumber(number));
        cursor.movePosition(QTextCursor::NextCharacter);
        const QPoint at = story.cursorRect(cursor).center();
        QTest::mouseDClick(story.viewport(), Qt::LeftButton, {}, at);
    }

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        QCOMPARE(Seen(Find<QToolButton>(window, u"again"_s).text()), u"Read again"_s);
        QCOMPARE(Faults(window), QString());
        const QSize least = window.minimumSizeHint();
        QVERIFY2(least.width() <= 780 && least.height() <= 200,
                 qPrintable(QString::number(least.height())));
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        QCOMPARE(TabOrder(window, u"page"_s),
                 (QStringList{u"page"_s, u"search"_s, u"again"_s, u"lines"_s, u"story"_s}));
    }

    void APageShowsItsLinesWithTheirSources()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        QCOMPARE(PageNames(window), (QStringList{u"a.htm"_s, u"b.htm"_s}));
        QCOMPARE(Pages(window).currentText(), u"a.htm"_s);
        QCOMPARE(Rows(window),
                 (QStringList{u"1|_template.txt:1|<b>One & <i></b>"_s,
                              u"2|_template.txt:2|<!--BODY HERE-->"_s, u"3|_html.txt:3|Hello"_s}));
        QTest::keyClick(&Pages(window), Qt::Key_Down);
        QCOMPARE(Rows(window), (QStringList{u"1|_template.txt:1|<b>Two</b>"_s,
                                            u"2|_template.txt:2|<!--BODY HERE-->"_s,
                                            u"3|_html.txt:6|Bye"_s, u"4|_html.txt:7|hello"_s}));
        QCOMPARE(Find<QLabel>(window, u"count"_s).text(), u"Lines: 4"_s);
    }

    void ALineShowsItsStoryWithTheChangeMarked()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        QCOMPARE(Story(window).toPlainText(), QString());
        QVERIFY(!Story(window).placeholderText().isEmpty());
        ChooseLine(window, 0);
        const QStringList story = Paragraphs(window);
        QCOMPARE(story.size(), 3);
        QCOMPARE(story[0], u"Source, _template.txt:1/<b>@TITLE</b>"_s);
        QVERIFY2(story[1].startsWith(u"@TITLE: "_s), qPrintable(story[1]));
        QVERIFY2(story[1].endsWith(u"/<b>One & <i></b>"_s), qPrintable(story[1]));
        QCOMPARE(story[2], u"Result, a.htm:1/<b>One & <i></b>"_s); // as text, no HTML
        QCOMPARE(Marked(window), QStringList{u"One & <i>"_s});
    }

    void WhatWasTakenOutIsShown()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("site/_template.txt", "=2=<hr>\r\n<!--BODY HERE-->\r\n");
        StoryPane window(desk, nullptr);
        window.show();
        Pages(window).setCurrentIndex(1);
        ChooseLine(window, 0);
        const QString step = Paragraphs(window).value(1);
        QVERIFY2(step.startsWith(u"=2=: "_s), qPrintable(step));
        QVERIFY2(step.endsWith(u"/<hr>/taken out: =2="_s), qPrintable(step));
        QCOMPARE(Marked(window), QStringList());
    }

    void SearchKeepsTheLinesThatHoldTheText()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        Pages(window).setCurrentIndex(1);
        auto& search = Find<QLineEdit>(window, u"search"_s);
        QTest::keyClicks(&search, u"HELLO"_s);
        QCOMPARE(Rows(window), QStringList{u"4|_html.txt:7|hello"_s});
        QCOMPARE(Find<QLabel>(window, u"count"_s).text(), u"Lines: 1 of 4"_s);
        ChooseLine(window, 0);
        QCOMPARE(Paragraphs(window).last(), u"Result, b.htm:4/hello"_s);
        search.setText(u"<b>"_s); // no pattern, and no HTML either
        QCOMPARE(Rows(window), QStringList{u"1|_template.txt:1|<b>Two</b>"_s});
        search.setText(u".*"_s);
        QCOMPARE(Rows(window), QStringList());
        QCOMPARE(Story(window).toPlainText(), QString());
        search.clear();
        QCOMPARE(Rows(window).size(), 4);
    }

    void KeysLeadFromTheSearchToTheLinesAndClearIt()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        window.activateWindow();
        Pages(window).setCurrentIndex(1);
        auto& search = Find<QLineEdit>(window, u"search"_s);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down}) {
            search.setFocus();
            QTest::keyClicks(&search, u"hello"_s);
            QTest::keyClick(&search, key);
            QCOMPARE(window.focusWidget()->objectName(), u"lines"_s);
            QCOMPARE(Paragraphs(window).last(), u"Result, b.htm:4/hello"_s);
            QTest::keyClick(&search, Qt::Key_Escape);
            QCOMPARE(Rows(window).size(), 4);
        }
    }

    void SearchFindsWhatIsBeyondTheCell()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("site/_html.txt",
                 "@FILE = a\r\n@TITLE = A\r\n" + std::string(5000, '.') + "needle\r\n");
        StoryPane window(desk, nullptr);
        window.show();
        QTest::keyClicks(&Find<QLineEdit>(window, u"search"_s), u"needle"_s);
        QCOMPARE(Rows(window).size(), 1);
    }

    void ADoubleClickOrEnterOpensTheSourceOfALine()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.workspace().EditorCommand = "pad +%l %f ";
        StoryPane window(desk, nullptr);
        window.show();
        QTreeView& lines = Lines(window);
        const QPoint first = lines.visualRect(lines.model()->index(0, 2)).center();
        QTest::mouseClick(lines.viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(lines.viewport(), Qt::LeftButton, {}, first);
        QCOMPARE(desk.programs.Launched(), Texts{"pad +1 C:\\site\\_template.txt"});
        ChooseLine(window, 2);
        QTest::keyClick(&lines, Qt::Key_Return);
        QCOMPARE(desk.programs.Launched().back(), std::string("pad +3 C:\\site\\_html.txt"));
        QVERIFY(window.isVisible());
    }

    void ADoubleClickOrEnterOpensTheDefinitionOfAStep()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.workspace().EditorCommand = "pad +%l %f ";
        StoryPane window(desk, nullptr);
        window.show();
        ChooseLine(window, 0);
        DoubleClickParagraph(window, 1); // "@TITLE", which the page list defines
        QCOMPARE(desk.programs.Launched(), Texts{"pad +2 C:\\site\\_html.txt"});
        DoubleClickParagraph(window, 0);
        QCOMPARE(desk.programs.Launched().back(), std::string("pad +1 C:\\site\\_template.txt"));
        DoubleClickParagraph(window, 2); // the result has no source of its own
        QCOMPARE(desk.programs.Launched().size(), std::size_t{2});
        Story(window).moveCursor(QTextCursor::Start);
        Story(window).moveCursor(QTextCursor::NextBlock);
        QTest::keyClick(&Story(window), Qt::Key_Return);
        QCOMPARE(desk.programs.Launched().back(), std::string("pad +2 C:\\site\\_html.txt"));
    }

    void AFailingBuildIsToldAndShowsWhatItMade()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\nHello\r\n!++gone.htm\r\n");
        StoryPane window(desk, nullptr);
        window.show();
        QVERIFY(Trouble(window).startsWith(u"The build ended in an error: "_s));
        QVERIFY(Trouble(window).contains(u"C:\\site\\_html.txt, line 4, page a.htm"_s));
        QCOMPARE(Rows(window).size(), 4);
        QCOMPARE(Rows(window)[2], u"3|_html.txt:3|Hello"_s);
        QCOMPARE(Rows(window)[3], u"|_html.txt:4|!++gone.htm"_s);
        ChooseLine(window, 3);
        QVERIFY(Paragraphs(window).last().startsWith(u"Result, a.htm: an error ended"_s));
        QCOMPARE(desk.words.shown, Texts());
        desk.Put("site/gone.htm", "here");
        Press(window, u"again"_s);
        QCOMPARE(Trouble(window), QString());
        QCOMPARE(Rows(window).last(), u"4|_html.txt:4|here"_s);
    }

    void AnEmptyFolderHasNoPages()
    {
        SideWindowDesk desk;
        StoryPane window(desk, nullptr);
        window.show();
        QCOMPARE(Trouble(window),
                 u"No page is made here: OOPS! Missing _html.txt, _template.txt"_s);
        QCOMPARE(PageNames(window), QStringList());
        QCOMPARE(Rows(window), QStringList());
        QCOMPARE(desk.words.shown, Texts());
    }

    void NothingIsWritten()
    {
        SideWindowDesk desk;
        PutSite(desk);
        const test::FileTree before = desk.Tree("");
        StoryPane window(desk, nullptr);
        window.show();
        Pages(window).setCurrentIndex(1);
        ChooseLine(window, 0);
        Press(window, u"again"_s);
        QCOMPARE(desk.Tree(""), before);
    }

    void ReadAgainKeepsPageLineAndSearch()
    {
        SideWindowDesk desk;
        PutSite(desk);
        StoryPane window(desk, nullptr);
        window.show();
        Pages(window).setCurrentIndex(1);
        Find<QLineEdit>(window, u"search"_s).setText(u"hello"_s);
        ChooseLine(window, 0);
        desk.Put("site/_template.txt", "<!--BODY HERE-->\r\n<hr>\r\n");
        desk.Put("site/_html.txt", "@FILE = b\r\n@TITLE = Two\r\nBye\r\nnow\r\nhello, hello\r\n"
                                   "@FILE = a\r\n@TITLE = One\r\n");
        Press(window, u"again"_s);
        QCOMPARE(Pages(window).currentText(), u"b.htm"_s);
        QCOMPARE(PageNames(window), (QStringList{u"b.htm"_s, u"a.htm"_s}));
        QCOMPARE(Rows(window), QStringList{u"4|_html.txt:5|hello, hello"_s});
        QCOMPARE(Paragraphs(window).last(), u"Result, b.htm:4/hello, hello"_s);
    }

    void FollowsTheWorkingDirectory()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("lab/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("lab/_html.txt", "@FILE = l\r\n@TITLE = L\r\n");
        StoryPane window(desk, nullptr);
        window.show();
        desk.workspace().switchto("C:\\lab");
        window.SetOutdated(); // as after each command
        QCOMPARE(PageNames(window), QStringList{u"l.htm"_s});
        window.hide();
        desk.workspace().switchto("C:\\site");
        window.SetOutdated();
        QCOMPARE(PageNames(window), QStringList{u"l.htm"_s}); // nobody sees it
        window.show();
        QCOMPARE(Pages(window).count(), 2);
    }

    void APageOfAnotherFolderIsShownUntilTheWorkingDirectoryChanges()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("site/lab/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/lab/_html.txt", "@FILE = k\r\n@TITLE = K\r\n@FILE = l\r\n@TITLE = L\r\n");
        StoryPane window(desk, nullptr);
        window.show();
        window.Choose("C:\\site\\lab\\", "C:\\site\\lab\\l.htm");
        QCOMPARE(PageNames(window), (QStringList{u"k.htm"_s, u"l.htm"_s}));
        QCOMPARE(window.ShownPage(), std::string("C:\\site\\lab\\l.htm"));
        Press(window, u"again"_s);
        QCOMPARE(window.ShownPage(), std::string("C:\\site\\lab\\l.htm"));
        QCOMPARE(desk.workspace().machine().files.CurrentDirectory(), std::string("C:\\site"));
        desk.workspace().switchto("C:\\site\\lab");
        desk.workspace().switchto("C:\\SITE");
        window.SetOutdated();
        QCOMPARE(PageNames(window), (QStringList{u"a.htm"_s, u"b.htm"_s}));
    }

    void ThousandsOfLinesAreThereAtOnce()
    {
        SideWindowDesk desk;
        PutSite(desk);
        std::string rows;
        for (int row = 0; row < 4000; ++row)
            rows += "x\ty\tz\r\n";
        std::string file;
        for (int line = 0; line < 20'000; ++line)
            file += "a line\r\n";
        desk.Put("site/file.txt", file);
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n!++file.txt\r\n<zutable>\r\n" +
                                       rows + "</zutable>\r\n");
        StoryPane window(desk, nullptr);
        window.show();
        const int lines = Lines(window).model()->rowCount();
        QVERIFY(lines > 24'000);
        QElapsedTimer time;
        time.start();
        ChooseLine(window, lines - 3);
        Find<QLineEdit>(window, u"search"_s).setText(u"</table>"_s);
        QCOMPARE(Lines(window).model()->rowCount(), 1);
        QVERIFY2(time.elapsed() < 2000, qPrintable(QString::number(time.elapsed())));
    }
};

const WindowTestOf<StoryWindowTest> story_window("story");

} // namespace kiv

#include "story_window_test.moc"
