// Building on save and the preview, from the menu of the main window.
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"
#include "tests/preview/raw_client.h"
#include "text/text.h"

#include <QAction>
#include <QComboBox>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class PreviewTest : public QObject {
    Q_OBJECT

    static void PutPages(const MainWindowDesk& desk, const std::string& text)
    {
        desk.Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/_html.txt",
                 "@FILE = a\r\n@TITLE = A\r\n" + text + "\r\n@FILE = b\r\n@TITLE = B\r\nBye\r\n");
    }
    /// The page "a" as it is on the disk, without the marker of its template.
    static std::string Body(const MainWindowDesk& desk)
    {
        const std::string page = desk.Exists("site/a.htm") ? desk.Content("site/a.htm") : "";
        return page.substr(page.find('\n') + 1);
    }
    /// The page that was opened last: "a.htm".
    static std::string Opened(const MainWindowDesk& desk)
    {
        const std::string line =
            desk.programs.Launched().empty() ? "" : desk.programs.Launched().back();
        return Contains(line, " http://127.0.0.1:") ? line.substr(line.rfind('/') + 1) : "";
    }
    static int Port(const MainWindowDesk& desk)
    {
        const std::string host = "http://127.0.0.1:";
        const std::string& line = desk.programs.Launched().back();
        return NumericHead(line.substr(line.find(host) + host.size()));
    }
    static QAction& Switch(const MainWindow& window)
    {
        return *window.findChild<QAction*>(u"mnu_buildsave"_s);
    }

  private slots:
    void init() { QSettings().clear(); }

    void ThePreviewBuildsServesAndOpensTheFirstPage()
    {
        MainWindowDesk desk;
        PutPages(desk, "Hello");
        MainWindow& window = desk.Start();
        QTest::keyClick(&window, Qt::Key_F6);
        QCOMPARE(desk.boxes.texts, QStringList());
        QCOMPARE(Opened(desk), std::string("a.htm"));
        QVERIFY(desk.Status().startsWith(u"Preview: http://127.0.0.1:"_s));
        QVERIFY(Contains(test::Get(Port(desk), "/a.htm"), "Hello"));
        QVERIFY(Switch(window).isChecked());
        PutPages(desk, "Changed");
        QTRY_VERIFY(Contains(test::Get(Port(desk), "/a.htm"), "Changed"));
    }

    void ThePageThatIsShownIsOpened()
    {
        MainWindowDesk desk;
        PutPages(desk, "Hello");
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_why"_s);
        Find<QComboBox>(window, u"page"_s).setCurrentIndex(1);
        desk.ChooseEntry(u"mnu_preview"_s);
        QCOMPARE(Opened(desk), std::string("b.htm"));
        const int port = Port(desk);
        Find<QComboBox>(window, u"page"_s).setCurrentIndex(0);
        desk.ChooseEntry(u"mnu_preview"_s); // the same server
        QCOMPARE(Opened(desk), std::string("a.htm"));
        Find<QTabWidget>(window, u"WorkPane"_s).setCurrentIndex(0);
        auto& pages = Find<QTreeView>(window, u"Pages"_s);
        pages.setCurrentIndex(pages.model()->index(1, 0));
        desk.ChooseEntry(u"mnu_preview"_s);
        QCOMPARE(Opened(desk), std::string("b.htm"));
        QCOMPARE(Port(desk), port);
    }

    void ClosingTheWindowStopsTheServer()
    {
        MainWindowDesk desk;
        PutPages(desk, "Hello");
        MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_preview"_s);
        const int port = Port(desk);
        window.close();
        QVERIFY_THROWS_EXCEPTION(std::exception, test::Get(port, "/"));
    }

    void SavesAreBuiltWhileTheSwitchIsOn()
    {
        MainWindowDesk desk;
        PutPages(desk, "one");
        const MainWindow& window = desk.Start();
        QVERIFY(!Switch(window).isChecked());
        Switch(window).trigger();
        QVERIFY(Switch(window).isChecked());
        QTRY_COMPARE(Body(desk), std::string("one\r\n"));
        PutPages(desk, "two");
        QTRY_COMPARE(Body(desk), std::string("two\r\n"));
        Switch(window).trigger();
        QVERIFY(!Switch(window).isChecked());
        PutPages(desk, "three");
        QTest::qWait(600);
        QCOMPARE(Body(desk), std::string("two\r\n"));
    }

    // A box at each save would keep one from writing.
    void WhatASavedSourceLacksStandsInTheListAlone()
    {
        MainWindowDesk desk;
        PutPages(desk, "x !!FLV[p");
        const MainWindow& window = desk.Start();
        const QAbstractItemModel& list = *Find<QTreeView>(window, u"Messages"_s).model();
        Switch(window).trigger();
        QTRY_COMPARE(list.rowCount(), 1);
        PutPages(desk, "<zutable>");
        QTRY_VERIFY(list.rowCount() == 1 && list.index(0, 2).data() != u"_html.txt:3"_s);
        PutPages(desk, "well");
        QTRY_COMPARE(list.rowCount(), 0);
        QVERIFY(Find<QTreeView>(window, u"Pages"_s).isVisible()); // nothing comes to the front
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).isEnabled());
    }

    void AnotherFolderTurnsItOff()
    {
        MainWindowDesk desk;
        PutPages(desk, "one");
        desk.Put("utils/kivjump.ini", "other|C:\\utils\r\n");
        const MainWindow& window = desk.Start();
        Switch(window).trigger();
        desk.ChooseEntry(u"mnu_jumpto(0)"_s);
        QVERIFY(!Switch(window).isChecked());
    }
};

const WindowTestOf<PreviewTest> preview_window("preview");

} // namespace kiv

#include "preview_window_test.moc"
