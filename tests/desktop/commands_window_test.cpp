// The commands of the main window: from the button to the files, and what is seen meanwhile.
#include "inspect/html_facts.h"
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"
#include "tests/support/recorders.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class CommandsTest : public QObject {
    Q_OBJECT

    static void PutSite(const MainWindowDesk& desk, const std::string& page_list)
    {
        desk.Put("site/_template.txt", "<html>\r\n<!--BODY HERE-->\r\n</html>\r\n");
        desk.Put("site/_html.txt", page_list);
    }
    static std::string Page(const std::string& body)
    {
        return "<html>\r\n<!--BODY HERE-->\r\n" + body + "</html>\r\n";
    }
    static QTreeView& Messages(const MainWindow& window)
    {
        return Find<QTreeView>(window, u"Messages"_s);
    }
    static int MessageCount(const MainWindow& window)
    {
        return Messages(window).model()->rowCount();
    }
    /// "kind", "message", "place", "page".
    static QStringList Row(const MainWindow& window, int row)
    {
        const QAbstractItemModel& model = *Messages(window).model();
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        return cells;
    }
    static const QWidget& Look(const MainWindow& window)
    {
        return Find<QWidget>(window, u"RenameLookWindow"_s);
    }
    static void DoubleClickFirst(const MainWindow& window)
    {
        QTreeView& list = Messages(window);
        const QPoint place = list.visualRect(list.model()->index(0, 1)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    }
    static bool ButtonsAreOn(const MainWindow& window)
    {
        return Find<QPushButton>(window, u"Command1"_s).isEnabled() &&
               Find<QPushButton>(window, u"Command2"_s).isEnabled() &&
               Find<QPushButton>(window, u"Command12"_s).isEnabled() &&
               window.menuBar()->isEnabled();
    }

  private slots:
    void init() { QSettings().clear(); } // no place of a window of the test before

    void BuildsFromTheButtonToTheFiles()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nHello @TITLE\r\n@FILE = b\r\n@TITLE = B\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        QCOMPARE(desk.Content("site/a.htm"), Page("Hello A\r\n"));
        QCOMPARE(desk.Content("site/b.htm"), Page(""));
        QCOMPARE(desk.Status(), u"2 files written"_s);
        QCOMPARE(desk.Pass(), QString());
        QCOMPARE(desk.boxes.texts, QStringList());
        QCOMPARE(MessageCount(window), 0);
        QVERIFY(Find<QTreeView>(window, u"Pages"_s).isVisible());
        QVERIFY(!Find<QProgressBar>(window, u"ProgressBar"_s).isVisible());
    }

    void NoSecondCommandStartsInABuild()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n@DATETIME\r\n");
        MainWindow& window = desk.Start();
        int looks = 0;
        desk.clock.on_look = [&] {
            ++looks;
            QVERIFY(!ButtonsAreOn(window));
            Press(window, u"Command2"_s);
            desk.ChooseEntry(u"mnu_zu"_s);
            QVERIFY(!window.Run([] {}));
            window.close();
            QVERIFY(window.isVisible());
        };
        Press(window, u"Command1"_s);
        QVERIFY(looks > 0);
        QCOMPARE(desk.programs.Launched(), Texts());
        QVERIFY(ButtonsAreOn(window));
        QVERIFY(!window.isVisible()); // it was closed when the build had ended
    }

    void FocusComesBackAfterABuild()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n");
        MainWindow& window = desk.Start();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(desk.Status(), u"1 files written"_s);
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).hasFocus());
    }

    void ShowsTheFirstWarningAndListsAll()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n"
                      "@FILE = b\r\n@TITLE = B\r\ny !!FLV[<q>\r\n");
        const MainWindow& window = desk.Start();
        desk.boxes.on_box = [&](const QMessageBox& box) {
            QCOMPARE(box.windowTitle(), u"kiv"_s);
            QCOMPARE(box.informativeText(), u"_html.txt:3"_s);
            QCOMPARE(Find<QLabel>(box, u"qt_msgbox_informativelabel"_s).textFormat(),
                     Qt::PlainText);
            QCOMPARE(box.icon(), QMessageBox::NoIcon);
            QCOMPARE(box.standardButtons(), QMessageBox::Ok);
            QVERIFY((box.textInteractionFlags() & Qt::TextSelectableByMouse) != 0);
            QVERIFY(!ButtonsAreOn(window));
        };
        Press(window, u"Command1"_s);
        QCOMPARE(desk.boxes.texts, QStringList{u"Missing closed bracket: p"_s});
        QVERIFY(Messages(window).isVisible());
        QCOMPARE(MessageCount(window), 2);
        QCOMPARE(Row(window, 0), (QStringList{u"warning"_s, u"Missing closed bracket: p"_s,
                                              u"_html.txt:3"_s, u"a.htm"_s}));
        QCOMPARE(Row(window, 1), (QStringList{u"warning"_s, u"Missing closed bracket: <q>"_s,
                                              u"_html.txt:6"_s, u"b.htm"_s}));
    }

    void AnErrorStaysInTheListUntilTheNextBuild()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n<zutable>\r\na\tb\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QCOMPARE(MessageCount(window), 1);
        const QStringList row = Row(window, 0);
        QVERIFY(!row[1].isEmpty() && desk.boxes.texts[0].startsWith(row[1]));
        QCOMPARE(desk.Status(), u"Failed: "_s + row[1]);
        QCOMPARE(row, (QStringList{u"error"_s, row[1], u"_html.txt:4"_s, QString()}));
        desk.ChooseEntry(u"mnu_NewYear"_s);
        QCOMPARE(Row(window, 0), row);
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n");
        Press(window, u"Command1"_s);
        QCOMPARE(MessageCount(window), 0);
    }

    void WhatOtherCommandsTellStandsBehindEachOnce()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        for (int times = 0; times < 2; ++times)
            desk.ChooseEntry(u"mnu_manual"_s); // there is none
        QCOMPARE(MessageCount(window), 2);
        QCOMPARE(Row(window, 1)[0], u"error"_s);
        QCOMPARE(desk.Status(), u"Failed: the manual is not where kiv looks for it"_s);
    }

    void CheckListsWhatItFinds()
    {
        if (!CanReadPages())
            QSKIP("that no page is read is a note of its own");
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        MainWindow& window = desk.Start();
        QTest::keyClick(&window, Qt::Key_F7);
        QCOMPARE(desk.boxes.texts, QStringList()); // all of it stands in the list
        QCOMPARE(desk.Status(), u"Check: 1 error, 0 warnings, 0 notes"_s);
        QCOMPARE(MessageCount(window), 1);
        QCOMPARE(Row(window, 0), (QStringList{u"error"_s, u"!!flv[ has no \"]\" in its line"_s,
                                              u"_html.txt:3"_s, QString()}));
        QVERIFY(Messages(window).model()->index(0, 0).data(Qt::DecorationRole).isValid());
        QVERIFY(!desk.Exists("site/a.htm")); // nothing is written
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\nx\r\n");
        QTest::keyClick(&window, Qt::Key_F7);
        QCOMPARE(desk.Status(), u"Check: nothing found"_s);
        QCOMPARE(MessageCount(window), 0);
    }

    void MessagesAreCopiedAndOpened()
    {
        MainWindowDesk desk;
        desk.Put("utils/kiv_editpad.txt", "pad +%l %f\r\n");
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        Press(window, u"CopyMessages"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"warning: Missing closed bracket: p (C:\\site\\_html.txt, line 3, page a.htm)"_s);
        DoubleClickFirst(window);
        QCOMPARE(desk.programs.Launched(), Texts{"pad +3 C:\\site\\_html.txt"});
        QCOMPARE(MessageCount(window), 1); // opening a file is no command that they would be of
    }

    void AnErrorAndAFindingAreOpenedAtTheirLines()
    {
        if (!CanReadPages())
            QSKIP("that no page is read is a note of its own");
        MainWindowDesk desk;
        desk.Put("utils/kiv_editpad.txt", "pad +%l %f\r\n");
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n<zutable>\r\na\tb\r\n");
        const MainWindow& window = desk.Start();
        QTreeView& list = Messages(window);
        const auto open_first = [&] {
            list.setCurrentIndex(list.model()->index(0, 0));
            QTest::keyClick(&list, Qt::Key_Return);
            return desk.programs.Launched().empty() ? "" : desk.programs.Launched().back();
        };
        Press(window, u"Command1"_s);
        QCOMPARE(open_first(), std::string("pad +4 C:\\site\\_html.txt"));
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        desk.ChooseEntry(u"mnu_check"_s);
        QCOMPARE(open_first(), std::string("pad +3 C:\\site\\_html.txt"));
    }

    void AFileWithABlankInItsPathIsOpenedWhole()
    {
        test::StartRecorder programs;
        MainWindowDesk desk;
        desk.Put("my site/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("my site/_html.txt", "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        desk.starter = &programs;
        const MainWindow& window = desk.Start("C:\\my site");
        Press(window, u"Command1"_s);
        DoubleClickFirst(window);
        QCOMPARE(programs.started, Texts{"pad C:\\my site\\_html.txt"});
        QCOMPARE(programs.files, Texts{"C:\\my site\\_html.txt"});
    }

    void TheWindowStaysAsItIsWhateverIsTold()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        const MainWindow& window = desk.Start();
        const QRect place = window.geometry();
        const QTabWidget& tabs = Find<QTabWidget>(window, u"WorkPane"_s);
        QCOMPARE(tabs.tabText(tabs.currentIndex()), u"Pages"_s);
        Press(window, u"Command1"_s);
        QCOMPARE(tabs.tabText(tabs.currentIndex()), u"Messages (1)"_s);
        QVERIFY(Messages(window).isVisible());
        desk.ChooseEntry(u"mnu_why"_s);
        desk.ChooseEntry(u"mnu_check"_s);
        QCOMPARE(window.geometry(), place);
    }

    void AMessageIsShownInFull()
    {
        MainWindowDesk desk;
        desk.Put("site/_html.txt", "@FILE = a\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        Messages(window).setCurrentIndex(Messages(window).model()->index(0, 0));
        const QString detail = Find<QPlainTextEdit>(window, u"MessageDetail"_s).toPlainText();
        QVERIFY(detail.startsWith(u"OOPS! Missing _html.txt, _template.txt\nThere is no "_s));
        QVERIFY(detail.endsWith(u"\nC:\\site\\_template.txt"_s));
    }

    void MessagesAreFilteredAndSorted()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nz !!FLV[zoo\r\n"
                      "@FILE = b\r\n@TITLE = B\r\n\r\ny !!FLV[ant\r\nx\r\nx\r\n!!FLV[mid\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        const auto places = [&] {
            QStringList cells;
            for (int row = 0; row < MessageCount(window); ++row)
                cells << Row(window, row)[2];
            return cells;
        };
        const QStringList as_told = {u"_html.txt:3"_s, u"_html.txt:7"_s, u"_html.txt:10"_s};
        QCOMPARE(places(), as_told);
        Messages(window).sortByColumn(1, Qt::AscendingOrder); // ant, mid, zoo
        QCOMPARE(places(), (QStringList{as_told[1], as_told[2], as_told[0]}));
        Messages(window).sortByColumn(2, Qt::DescendingOrder); // by the line's number
        QCOMPARE(places(), (QStringList{as_told[2], as_told[1], as_told[0]}));
        Messages(window).sortByColumn(-1, Qt::AscendingOrder);
        QCOMPARE(places(), as_told);
        Find<QLineEdit>(window, u"FilterMessages"_s).setText(u"ANT"_s);
        QCOMPARE(places(), QStringList{as_told[1]});
        Press(window, u"CopyMessages"_s); // what is shown
        QCOMPARE(
            QGuiApplication::clipboard()->text(),
            u"warning: Missing closed bracket: ant (C:\\site\\_html.txt, line 7, page b.htm)"_s);
    }

    void MissingSourcesAreToldWithWhatToDo()
    {
        MainWindowDesk desk;
        desk.Put("site/_html.txt", "@FILE = a\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        QCOMPARE(
            desk.boxes.texts,
            QStringList{u"OOPS! Missing _html.txt, _template.txt\r\n"
                        "There is no _template.txt in C:\\site. Write one: a single \";\" will "
                        "do for pages without a frame."_s});
        QCOMPARE(Row(window, 0)[1], u"OOPS! Missing _html.txt, _template.txt"_s);
    }

    void FatalErrorShowsTextAndPlace()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n<>\r\n!++gone.htm\r\n");
        const MainWindow& window = desk.Start();
        desk.boxes.on_box = [&](const QMessageBox&) { QVERIFY(ButtonsAreOn(window)); };
        Press(window, u"Command1"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(desk.boxes.texts[0].contains(u"gone.htm"_s));
        QVERIFY(desk.boxes.texts[0].endsWith(
            u"\r\nC:\\site\\_html.txt, line 4, page a.htm"
            "\r\nNothing has this name: look at its spelling, and whether it was moved."_s));
        QVERIFY(desk.Status().startsWith(u"Failed: "_s));
        QVERIFY(window.isVisible());
        desk.Put("site/gone.htm", "here");
        Press(window, u"Command1"_s);
        QCOMPARE(desk.Status(), u"1 files written"_s);
    }

    void GroupBuildHasTheNewYearSwitchOn()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n@@EOY\r\nnew @DATETIME\r\n@@EOY\r\n");
        desk.Put("site/_group.txt", "lab\r\n");
        desk.Put("site/lab/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/lab/_html.txt", "@FILE = l\r\n@TITLE = L\r\n@DATETIME\r\n");
        const MainWindow& window = desk.Start();
        QStringList indicator;
        desk.clock.on_look = [&] { indicator << Find<QLabel>(window, u"Label4"_s).text(); };
        Press(window, u"Command11"_s);
        QVERIFY(indicator.contains(u"EOY ON!"_s));
        QVERIFY(!indicator.contains(QString()));
        QVERIFY(desk.Exists("site/lab/l.htm"));
        QCOMPARE(Find<QLabel>(window, u"Label4"_s).text(), QString());
        QCOMPARE(Find<QLineEdit>(window, u"Text2"_s).text(), u"C:\\site\\"_s);
        Press(window, u"Command10"_s); // "do one"
        QCOMPARE(desk.Status(), u"1 files written"_s);
    }

    void ToggleNewYear()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        const QLabel& label = Find<QLabel>(window, u"Label4"_s);
        desk.ChooseEntry(u"mnu_NewYear"_s);
        QCOMPARE(label.text(), u"EOY ON!"_s);
        QVERIFY(label.isVisible());
        desk.ChooseEntry(u"mnu_NewYear"_s);
        QCOMPARE(label.text(), QString());
    }

    void PassIsShownBesideTheStatus()
    {
        MainWindowDesk desk;
        PutSite(desk, "@ASP = asp\r\n@FILE = a\r\n@TITLE = A\r\nASP:x !!FLV[p\r\n");
        std::filesystem::create_directories(desk.Native("site/asp"));
        const MainWindow& window = desk.Start();
        QStringList passes; // when the line of the ASP pass is warned of
        desk.boxes.on_box = [&](const QMessageBox&) { passes << desk.Pass(); };
        Press(window, u"Command1"_s);
        QCOMPARE(passes, QStringList{u"ASP"_s});
        QCOMPARE(desk.Pass(), QString());
    }

    void GrabAndNamesTellTheirStatus()
    {
        MainWindowDesk desk;
        desk.Put("site/A B.htm", "<title>T</title>\r\n");
        desk.Put("site/p.gif", "");
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"grab_redirect"_s);
        QCOMPARE(desk.Status(), u"Grab titles && redirect done"_s);
        QVERIFY(desk.Exists("site/grabtitles.txt"));
        desk.ChooseEntry(u"mnu_dirfix"_s);
        Press(Look(window), u"rename"_s);
        QCOMPARE(desk.Status(), u"Names fixed"_s);
        QVERIFY(desk.Exists("site/a-b.htm"));
        desk.ChooseEntry(u"mnu_addt"_s);
        Press(Look(window), u"rename"_s);
        QCOMPARE(desk.Status(), u"_t complete"_s);
        QVERIFY(desk.Exists("site/p_t.gif"));
    }

    void EmptyGrabShowsItsMessage()
    {
        MainWindowDesk desk;
        desk.Start();
        desk.ChooseEntry(u"menu_utils_grab"_s);
        QCOMPARE(desk.boxes.texts, QStringList{u"Empty directory!"_s});
    }

    void ClosesParagraphsInTheClipboard_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("CR LF") << u"a<p>\r\nb<P>\r\nc"_s << u"a</p>\r\nb</p>\r\nc"_s;
        QTest::newRow("LF stays LF") << u"a<p>\nb"_s << u"a</p>\nb"_s;
        QTest::newRow("other scripts") << u"\u4e2d<p>"_s << u"&#20013;</p>"_s;
    }
    void ClosesParagraphsInTheClipboard()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, after);
        MainWindowDesk desk;
        desk.Start();
        QGuiApplication::clipboard()->setText(before);
        desk.ChooseEntry(u"mnu_ptop"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), after);
    }

    void ProgramsAreStarted_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("launched");
        QTest::newRow("template") << u"Command2"_s << u"pad _template.txt"_s;
        QTest::newRow("content") << u"Command5"_s << u"pad _html.txt"_s;
        QTest::newRow("Dir window") << u"Command6"_s << u"explorer C:\\site\\"_s;
        QTest::newRow("Lanthorn") << u"mnu_zu"_s << u"c:\\utils\\lanthorn.exe"_s;
        QTest::newRow("l/c dir") << u"mnu_lc"_s << u"c:\\utils\\dosutils\\case *.* /l"_s;
        QTest::newRow("FTP list") << u"mnu_editftplist"_s << u"pad c:\\utils\\ftplist.txt"_s;
        QTest::newRow("FTP batch") << u"mnu_editftpbat"_s << u"pad c:\\guestout2.bat"_s;
        QTest::newRow("jump list") << u"mnu_editjump"_s << u"pad c:\\utils\\kivjump.ini"_s;
        QTest::newRow("lists") << u"openhtmls"_s << u"pad C:\\site\\lab\\_html.txt"_s;
        QTest::newRow("templates")
            << u"mnu_alltemplates"_s << u"pad C:\\site\\lab\\_template.txt"_s;
        QTest::newRow("site map") << u"mnu_sitemap"_s << u"pad C:\\site\\_sitemap-master.txt"_s;
    }
    void ProgramsAreStarted()
    {
        QFETCH(const QString, control);
        QFETCH(const QString, launched);
        MainWindowDesk desk;
        desk.Put("site/_group.txt", "lab\r\n");
        desk.Put("site/_sitemap.txt", "<li>\r\n");
        desk.Put("site/lab/_sitemap.txt", "<li>\r\n");
        const MainWindow& window = desk.Start();
        if (control.startsWith(u"Command"_s))
            Press(window, control);
        else
            desk.ChooseEntry(control);
        QCOMPARE(desk.programs.Launched(), Texts{launched.toStdString()});
        QCOMPARE(desk.boxes.texts, QStringList());
    }

    void LongMessagesStayOnTheScreen()
    {
        MainWindowDesk desk;
        MainWindow& window = desk.Start();
        desk.boxes.on_box = [&](const QMessageBox& box) {
            QVERIFY(box.height() < 600);
            QVERIFY(box.width() < 800);
            QVERIFY(box.button(QMessageBox::Ok)->isVisible());
        };
        std::string lines;
        for (int i = 0; i < 300; ++i)
            lines += "line\r\n";
        window.ShowMessage(lines);
        window.ShowMessage(std::string(20000, 'w'));
        QCOMPARE(desk.boxes.texts.size(), 2);
        QCOMPARE(desk.boxes.texts[1].size(), 20000);
    }

    void MissingProgramGivesABox()
    {
        MainWindowDesk desk;
        SystemPrograms system(*desk.files);
        desk.starter = &system;
        desk.Put("utils/kiv_editpad.txt", "C:\\utils\\nopad.exe\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command2"_s);
        QCOMPARE(desk.boxes.texts,
                 QStringList{u"cannot start C:\\utils\\nopad.exe _template.txt: no such program\r\n"
                             "Install the program, or mend the command that names it."_s});
        QVERIFY(ButtonsAreOn(window));
    }

    void StoriesAreToldWithoutABoxAndFollowCommands()
    {
        MainWindowDesk desk;
        desk.Put("utils/kiv_editpad.txt", "pad +%l %f\r\n");
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n"); // warned of in a build
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_why"_s);
        auto& lines = Find<QTreeView>(window, u"lines"_s);
        QCOMPARE(lines.model()->rowCount(), 4);
        QCOMPARE(desk.boxes.texts, QStringList());
        QCOMPARE(MessageCount(window), 0);
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\none\r\ntwo\r\n");
        lines.setCurrentIndex(lines.model()->index(2, 0));
        QTest::keyClick(&lines, Qt::Key_Return);
        QCOMPARE(desk.programs.Launched(), Texts{"pad +3 C:\\site\\_html.txt"});
        QCOMPARE(lines.model()->rowCount(), 4); // opening a file reads nothing again
        QCOMPARE(lines.currentIndex().row(), 2);
        Press(window, u"Command1"_s);
        QCOMPARE(lines.model()->rowCount(), 5);
        QCOMPARE(lines.currentIndex().row(), 2);
    }

    void WindowsAreOpenedOnceEach_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("title");
        QTest::newRow("directory")
            << u"Command4"_s << u"DirectoryWindow"_s << u"Choose directory"_s;
        QTest::newRow("rename") << u"mnu_rename"_s << u"RenameWindow"_s << u"Rename files"_s;
        QTest::newRow("help") << u"menu_help"_s << u"HelpWindow"_s << u"KIV HELP"_s;
        QTest::newRow("news") << u"mnu_newnews"_s << u"NewsWindow"_s << u"News Item"_s;
        QTest::newRow("quotes") << u"mnu_cleanquotes"_s << u"ConversionWindow"_s << QString();
        QTest::newRow("dimensions") << u"mnu_resizer"_s << u"DimensionWindow"_s << QString();
    }
    void WindowsAreOpenedOnceEach()
    {
        QFETCH(const QString, control);
        QFETCH(const QString, window);
        QFETCH(const QString, title);
        MainWindowDesk desk;
        const MainWindow& main = desk.Start();
        for (int times = 0; times < 2; ++times) {
            if (control.startsWith(u"Command"_s))
                Press(main, control);
            else
                desk.ChooseEntry(control);
        }
        const QList<QWidget*> opened = main.findChildren<QWidget*>(window);
        QCOMPARE(opened.size(), 1);
        QVERIFY(opened[0]->isVisible());
        QVERIFY(!opened[0]->isModal());
        if (!title.isEmpty())
            QCOMPARE(opened[0]->windowTitle(), title);
        QTest::keyClick(opened[0], Qt::Key_Escape);
        QVERIFY(!opened[0]->isVisible());
    }
};

const WindowTestOf<CommandsTest> commands_window("commands");

} // namespace kiv

#include "commands_window_test.moc"
