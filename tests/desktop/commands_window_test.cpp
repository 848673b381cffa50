// The commands of the main window: from the button to the files, and what is seen meanwhile.
#include "inspect/html_facts.h"
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test_main.h"
#include "tests/support/recorders.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTreeView>
#include <QTreeWidget>

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
    static const QTreeWidget& Messages(const MainWindow& window)
    {
        return Find<QTreeWidget>(window, u"Messages"_s);
    }
    static QStringList Row(const MainWindow& window, int row)
    {
        QStringList cells;
        for (int column = 0; column < 4; ++column)
            cells << Messages(window).topLevelItem(row)->text(column);
        return cells;
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
        QVERIFY(!Find<QWidget>(window, u"MessagesPane"_s).isVisible());
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
            QCOMPARE(box.icon(), QMessageBox::NoIcon);
            QCOMPARE(box.standardButtons(), QMessageBox::Ok);
            QVERIFY((box.textInteractionFlags() & Qt::TextSelectableByMouse) != 0);
            QVERIFY(!ButtonsAreOn(window));
        };
        Press(window, u"Command1"_s);
        QCOMPARE(desk.boxes.texts, QStringList{u"Missing closed bracket: p"_s});
        QVERIFY(Messages(window).isVisible());
        QCOMPARE(Messages(window).topLevelItemCount(), 2);
        const QString list = u"C:\\site\\_html.txt"_s;
        QCOMPARE(Row(window, 0),
                 (QStringList{u"Missing closed bracket: p"_s, list, u"3"_s, u"a.htm"_s}));
        QCOMPARE(Row(window, 1),
                 (QStringList{u"Missing closed bracket: <q>"_s, list, u"6"_s, u"b.htm"_s}));
    }

    void AnErrorStaysInTheList()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\n<zutable>\r\na\tb\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QCOMPARE(Messages(window).topLevelItemCount(), 1);
        const QStringList row = Row(window, 0);
        QVERIFY(!row[0].isEmpty() && desk.boxes.texts[0].startsWith(row[0]));
        QCOMPARE(row.mid(1), (QStringList{u"C:\\site\\_html.txt"_s, u"4"_s, QString()}));
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
        QCOMPARE(Messages(window).topLevelItemCount(), 1);
        QCOMPARE(Row(window, 0), (QStringList{u"!!flv[ has no \"]\" in its line"_s,
                                              u"C:\\site\\_html.txt"_s, u"3"_s, QString()}));
        QVERIFY(!Messages(window).topLevelItem(0)->icon(0).isNull());
        QVERIFY(!desk.Exists("site/a.htm")); // nothing is written
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\nx\r\n");
        QTest::keyClick(&window, Qt::Key_F7);
        QCOMPARE(desk.Status(), u"Check: nothing found"_s);
        QVERIFY(!Messages(window).isVisible());
    }

    void MessagesAreCopiedAndOpened()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        Press(window, u"CopyMessages"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"warning: Missing closed bracket: p (C:\\site\\_html.txt, line 3, page a.htm)"_s);
        const QTreeWidget& list = Messages(window);
        const QRect place = list.visualItemRect(list.topLevelItem(0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.center());
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place.center());
        QCOMPARE(desk.programs.Launched(), Texts{"pad C:\\site\\_html.txt"});
        QVERIFY(list.isVisible()); // opening a file is no command that they would be of
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
        const QTreeWidget& list = Messages(window);
        const QRect place = list.visualItemRect(list.topLevelItem(0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place.center());
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place.center());
        QCOMPARE(programs.started, Texts{"pad C:\\my site\\_html.txt"});
        QCOMPARE(programs.files, Texts{"C:\\my site\\_html.txt"});
    }

    void MessagesGoWithTheNextCommandAndWithEscape()
    {
        MainWindowDesk desk;
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n");
        MainWindow& window = desk.Start();
        const int height = window.height();
        Press(window, u"Command1"_s);
        QVERIFY(window.height() > height);
        desk.ChooseEntry(u"mnu_NewYear"_s);
        QVERIFY(!Messages(window).isVisible());
        QCOMPARE(window.height(), height);
        Press(window, u"Command1"_s);
        QVERIFY(Messages(window).isVisible());
        QTest::keyClick(&Find<QTreeWidget>(window, u"Messages"_s), Qt::Key_Escape);
        QVERIFY(!Messages(window).isVisible());
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
        QCOMPARE(Row(window, 0).first(), u"OOPS! Missing _html.txt, _template.txt"_s);
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
        QCOMPARE(desk.Status(), u"a.htm"_s); // as it stood
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
        desk.Start();
        desk.ChooseEntry(u"grab_redirect"_s);
        QCOMPARE(desk.Status(), u"Grab titles && redirect done"_s);
        QVERIFY(desk.Exists("site/grabtitles.txt"));
        desk.ChooseEntry(u"mnu_dirfix"_s);
        QCOMPARE(desk.Status(), u"Names fixed"_s);
        QVERIFY(desk.Exists("site/a-b.htm"));
        desk.ChooseEntry(u"mnu_addt"_s);
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
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\nx !!FLV[p\r\n"); // warned of in a build
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_why"_s);
        auto& lines = Find<QTreeView>(window, u"lines"_s);
        QCOMPARE(lines.model()->rowCount(), 4);
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(!Messages(window).isVisible());
        PutSite(desk, "@FILE = a\r\n@TITLE = A\r\none\r\ntwo\r\n");
        lines.setCurrentIndex(lines.model()->index(2, 0));
        QTest::keyClick(&lines, Qt::Key_Return);
        QCOMPARE(desk.programs.Launched(), Texts{"pad C:\\site\\_html.txt"});
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
        QTest::newRow("why") << u"mnu_why"_s << u"StoryWindow"_s << u"Why a line looks so"_s;
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

} // namespace kiv

int main(int count, char** arguments)
{
    return kiv::RunWindowTest<kiv::CommandsTest>(count, arguments);
}

#include "commands_window_test.moc"
