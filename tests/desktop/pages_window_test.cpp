// The tab "Pages": what it shows of a folder and of a group, its filter, and what is done with one.
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class PagesTest : public QObject {
    Q_OBJECT

    static void PutSite(const MainWindowDesk& desk)
    {
        desk.Put("utils/kiv_editpad.txt", "pad +%l %f\r\n");
        desk.Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/_html.txt", "; a remark\r\n@FILE = index\r\n@TITLE = Welcome\r\nHello\r\n"
                                   "@FILE = visit\r\n@TITLE = Visit us\r\nx !!FLV[p\r\n");
    }
    static void PutGroup(const MainWindowDesk& desk)
    {
        PutSite(desk);
        desk.Put("site/_group.txt", "lab\r\ngone\r\n");
        desk.Put("site/lab/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/lab/_html.txt", "@FILE = index\r\n@TITLE = The laboratory\r\n");
    }
    static QTreeView& List(const MainWindow& window) { return Find<QTreeView>(window, u"Pages"_s); }
    /// "number|file|title|last build|warnings" of each row that can be seen; a folder's pages are
    /// set in.
    static QStringList Rows(const MainWindow& window, const QModelIndex& above = {})
    {
        const QTreeView& list = List(window);
        QStringList rows;
        for (int row = 0; row < list.model()->rowCount(above); ++row) {
            QStringList cells;
            for (int column = 0; column < 5; ++column)
                cells << list.model()->index(row, column, above).data().toString();
            rows << (above.isValid() ? u"  "_s : QString()) + cells.join(u'|');
            const QModelIndex index = list.model()->index(row, 0, above);
            if (list.isExpanded(index))
                rows << Rows(window, index);
        }
        return rows;
    }
    static void ChooseRow(const MainWindow& window, int row)
    {
        List(window).setCurrentIndex(List(window).model()->index(row, 0));
    }
    static void Ask(const MainWindow& window, const QString& text)
    {
        for (QAction* const action : List(window).actions())
            if (action->text().section(u'\t', 0, 0) == text)
                return action->trigger();
        qFatal("no entry %s", qPrintable(text));
    }

  private slots:
    void init() { QSettings().clear(); }

    void AFolderIsShownAtOnceAndNothingIsWritten()
    {
        MainWindowDesk desk;
        PutSite(desk);
        const test::FileTree before = test::ReadTree(desk.Native(""));
        const MainWindow& window = desk.Start();
        QCOMPARE(Rows(window),
                 (QStringList{u"1|index.htm|Welcome||"_s, u"2|visit.htm|Visit us||"_s}));
        QCOMPARE(desk.boxes.texts, QStringList());
        QCOMPARE(test::ReadTree(desk.Native("")), before);
        QVERIFY(!Find<QLabel>(window, u"PagesTrouble"_s).isVisible());
    }

    void AGroupIsShownByItsFolders()
    {
        MainWindowDesk desk;
        PutGroup(desk);
        const MainWindow& window = desk.Start();
        const QStringList rows = Rows(window);
        QCOMPARE(rows.mid(0, 5), (QStringList{u"|site|||"_s, u"  1|index.htm|Welcome||"_s,
                                              u"  2|visit.htm|Visit us||"_s, u"|lab|||"_s,
                                              u"  1|index.htm|The laboratory||"_s}));
        QVERIFY(rows[5].startsWith(u"|gone|cannot "_s));
        QCOMPARE(desk.Window().workspace().machine().files.CurrentDirectory(),
                 std::string("C:\\site"));
    }

    void WhatABuildDidIsTold()
    {
        MainWindowDesk desk;
        PutSite(desk);
        desk.Put("site/index.htm", "<!--BODY HERE-->\r\nHello\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        QCOMPARE(Rows(window), (QStringList{u"1|index.htm|Welcome|as it was|"_s,
                                            u"2|visit.htm|Visit us|new|1"_s}));
        desk.Put("site/_html.txt", "@FILE = index\r\n@TITLE = Welcome\r\nBye\r\n@FILE = visit\r\n"
                                   "@TITLE = Visit us\r\n!++gone.txt\r\n");
        Press(window, u"Command1"_s);
        const QStringList rows = Rows(window);
        QCOMPARE(rows[0], u"1|index.htm|Welcome|changed|"_s);
        QVERIFY(
            rows[1].startsWith(u"2|visit.htm|Visit us|not written: the build ended before it"_s));
    }

    void AGroupBuildTellsOfEachFolder()
    {
        MainWindowDesk desk;
        PutGroup(desk);
        desk.Put("site/_group.txt", "lab\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command11"_s);
        const QStringList all = {u"|site|||"_s, u"  1|index.htm|Welcome|new|"_s,
                                 u"  2|visit.htm|Visit us|new|1"_s, u"|lab|||"_s,
                                 u"  1|index.htm|The laboratory|new|"_s};
        QCOMPARE(Rows(window), all);
        Press(window, u"Command10"_s); // the folder alone: of the others stays what is known
        QCOMPARE(Rows(window).last(), all.last());
        QCOMPARE(Rows(window)[1], u"  1|index.htm|Welcome|as it was|"_s);
    }

    void TheFilterKeepsWhatHoldsTheText()
    {
        MainWindowDesk desk;
        PutGroup(desk);
        desk.Put("site/_group.txt", "lab\r\n");
        const MainWindow& window = desk.Start();
        auto& filter = Find<QLineEdit>(window, u"FilterPages"_s);
        QTest::keyClicks(&filter, u"VISIT"_s);
        QCOMPARE(Rows(window), (QStringList{u"|site|||"_s, u"  2|visit.htm|Visit us||"_s}));
        filter.setText(u"lab"_s); // a folder with all that is in it
        QCOMPARE(Rows(window), (QStringList{u"|lab|||"_s, u"  1|index.htm|The laboratory||"_s}));
        List(window).collapse(List(window).model()->index(0, 0));
        filter.clear();
        QCOMPARE(Rows(window).size(), 4); // what the user has closed stays closed
    }

    void TheChosenPageStaysInSightWhateverIsFiltered()
    {
        MainWindowDesk desk;
        PutGroup(desk);
        std::string list;
        for (int page = 0; page < 90; ++page)
            list += "@FILE = page" + std::to_string(page) + "\r\n@TITLE = T\r\n";
        desk.Put("site/lab/_html.txt", list);
        const MainWindow& window = desk.Start();
        const QTreeView& pages = List(window);
        auto& filter = Find<QLineEdit>(window, u"FilterPages"_s);
        filter.setText(u"page80"_s);
        QTest::keyClick(&filter, Qt::Key_Return); // to the only page that is left
        const auto chosen = [&] {
            return pages.currentIndex().siblingAtColumn(1).data().toString();
        };
        QCOMPARE(chosen(), u"page80.htm"_s);
        for (const QString& text : {u"page8"_s, QString(), u"page"_s}) {
            filter.setText(text);
            QCOMPARE(chosen(), u"page80.htm"_s);
            const QRect place = pages.visualRect(pages.currentIndex());
            QVERIFY(!place.isEmpty() && pages.viewport()->rect().contains(place.center()));
        }
    }

    void EnterAndDoubleClickOpenTheLineInTheEditor()
    {
        MainWindowDesk desk;
        PutSite(desk);
        MainWindow& window = desk.Start();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), u"visit"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(desk.programs.Launched(), Texts{"pad +5 C:\\site\\_html.txt"});
        Find<QLineEdit>(window, u"FilterPages"_s).clear();
        const QPoint first = List(window).visualRect(List(window).model()->index(0, 1)).center();
        QTest::mouseClick(List(window).viewport(), Qt::LeftButton, {}, first);
        QTest::mouseDClick(List(window).viewport(), Qt::LeftButton, {}, first);
        QCOMPARE(desk.programs.Launched().back(), std::string("pad +2 C:\\site\\_html.txt"));
    }

    void ChangedListsAreReadAgain()
    {
        MainWindowDesk desk;
        PutSite(desk);
        MainWindow& window = desk.Start();
        ChooseRow(window, 1);
        desk.Put("site/_html.txt", "++more.txt\r\n@FILE = visit\r\n@TITLE = Visit us\r\n");
        desk.Put("site/more.txt", "@FILE = one\r\n@TITLE = One\r\n");
        QTRY_COMPARE(Rows(window),
                     (QStringList{u"1|one.htm|One||"_s, u"2|visit.htm|Visit us||"_s}));
        QCOMPARE(List(window).currentIndex().row(), 1); // the same page
        desk.Put("site/more.txt", "@FILE = one\r\n@TITLE = Another one\r\n");
        QTest::keyClick(&window, Qt::Key_F5);
        QCOMPARE(Rows(window)[0], u"1|one.htm|Another one||"_s);
    }

    void AnotherFolderShowsItsOwn()
    {
        MainWindowDesk desk;
        PutGroup(desk);
        desk.Put("utils/kivjump.ini", "Lab|C:\\site\\lab\r\nEmpty|C:\\utils\r\n");
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_jumpto(0)"_s);
        QCOMPARE(Rows(window), QStringList{u"1|index.htm|The laboratory||"_s});
        desk.ChooseEntry(u"mnu_jumpto(1)"_s);
        QCOMPARE(Rows(window), QStringList());
        QCOMPARE(Find<QLabel>(window, u"PagesTrouble"_s).text(),
                 u"There is no page list, _html.txt, here."_s);
    }

    void WhyShowsThePageThatIsChosen()
    {
        MainWindowDesk desk;
        PutGroup(desk);
        desk.Put("site/_group.txt", "lab\r\n");
        MainWindow& window = desk.Start();
        const QAbstractItemModel& model = *List(window).model();
        List(window).setCurrentIndex(model.index(0, 0, model.index(1, 0))); // of the other folder
        QTest::keyClick(&window, Qt::Key_F8);
        QCOMPARE(Find<QTabWidget>(window, u"WorkPane"_s).currentIndex(), 1);
        auto& lines = Find<QTreeView>(window, u"lines"_s);
        QCOMPARE(lines.model()->rowCount(), 1);
        lines.setCurrentIndex(lines.model()->index(0, 0));
        QTest::keyClick(&lines, Qt::Key_Return);
        QCOMPARE(desk.programs.Launched(), Texts{"pad +1 C:\\site\\lab\\_template.txt"});
    }

    void APageIsShownAndItsAddressCopied()
    {
        MainWindowDesk desk;
        PutSite(desk);
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_showpage"_s); // none is chosen
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(desk.boxes.texts[0].startsWith(u"no page is chosen"_s));
        ChooseRow(window, 0);
        desk.ChooseEntry(u"mnu_showpage"_s);
        QVERIFY(desk.boxes.texts[1].startsWith(u"the page is not there yet"_s));
        desk.boxes.texts.clear();
        Press(window, u"Command1"_s);
        Find<QTabWidget>(window, u"WorkPane"_s).setCurrentIndex(0);
        Ask(window, u"Show in browser"_s);
        QCOMPARE(desk.programs.Launched(), Texts{"explorer C:\\site\\index.htm"});
        Ask(window, u"Show in folder"_s);
        QCOMPARE(desk.programs.Launched().back(), std::string("explorer C:\\site\\"));
        Ask(window, u"Copy address"_s);
        QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"file:///"_s));
        QVERIFY(QGuiApplication::clipboard()->text().endsWith(u"/site/index.htm"_s));
        Ask(window, u"Why"_s);
        QCOMPARE(Find<QTabWidget>(window, u"WorkPane"_s).currentIndex(), 1);
    }

    void SortedByTitleAndBack()
    {
        MainWindowDesk desk;
        PutSite(desk);
        const MainWindow& window = desk.Start();
        List(window).sortByColumn(2, Qt::AscendingOrder);
        QCOMPARE(Rows(window)[0], u"2|visit.htm|Visit us||"_s);
        List(window).sortByColumn(-1, Qt::AscendingOrder);
        QCOMPARE(Rows(window)[0], u"1|index.htm|Welcome||"_s);
    }

    void KeysLeadToTheTabs()
    {
        MainWindowDesk desk;
        PutSite(desk);
        desk.Put("site/_html.txt", "@FILE = index\r\n@TITLE = Welcome\r\n"); // no box comes up
        MainWindow& window = desk.Start();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const auto& tabs = Find<QTabWidget>(window, u"WorkPane"_s);
        QTest::keyClick(&window, Qt::Key_3, Qt::ControlModifier);
        QCOMPARE(tabs.currentIndex(), 2);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"FilterMessages"_s);
        QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"page"_s);
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"search"_s);
        QTest::keyClick(&window, Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"FilterPages"_s);
        QTest::keyClick(&window, Qt::Key_B, Qt::ControlModifier);
        QVERIFY(desk.Exists("site/index.htm"));
        QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
        QVERIFY(Find<QWidget>(window, u"DirectoryWindow"_s).isVisible());
    }
};

const WindowTestOf<PagesTest> pages_window("pages");

} // namespace kiv

#include "pages_window_test.moc"
