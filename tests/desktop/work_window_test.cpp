// A day's work in the main window: going about, renaming with a look before, stopping, and a status
// line that tells the truth.
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>

namespace kiv {

using namespace Qt::StringLiterals;

class WorkTest : public QObject {
    Q_OBJECT

    static QLineEdit& Path(const MainWindow& window) { return Find<QLineEdit>(window, u"Text2"_s); }
    static void Type(const MainWindow& window, const QString& path)
    {
        QLineEdit& field = Path(window);
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, path);
        QTest::keyClick(&field, Qt::Key_Return);
    }
    static QString NativePath(const MainWindowDesk& desk, const std::string& below)
    {
        return QString::fromStdString(test::NativeTextOf(desk.Native(below)));
    }
    static const QWidget& Look(const MainWindow& window)
    {
        return Find<QWidget>(window, u"RenameLookWindow"_s);
    }
    static QString LookText(const MainWindow& window)
    {
        return Find<QLabel>(Look(window), u"summary"_s).text();
    }
    static const QAction& Entry(const MainWindow& window, const QString& name)
    {
        return Find<QAction>(window, name);
    }
    /// A site of three pages, each of which looks at the clock.
    static void PutThreePages(const MainWindowDesk& desk)
    {
        desk.Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        std::string list;
        for (const char* const name : {"a", "b", "c"})
            list += std::string("@FILE = ") + name + "\r\n@TITLE = T\r\n@DATETIME\r\n";
        desk.Put("site/_html.txt", list);
    }
    /// Builds and does something while the first page is in work.
    static void BuildAnd(MainWindowDesk& desk, const std::function<void()>& meanwhile)
    {
        int looks = 0;
        desk.clock.on_look = [&, meanwhile] {
            if (++looks == 1)
                meanwhile();
        };
        Press(desk.Window(), u"Command1"_s);
        desk.clock.on_look = nullptr;
    }

  private slots:
    void init() { QSettings().clear(); }

    void ATypedPathGoesThereAndBuildsNothing()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        desk.PutFolder("site/lab");
        const MainWindow& window = desk.Start();
        Type(window, u"c:\\site\\lab"_s);
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\site\\lab\\"));
        QCOMPARE(desk.Status(), u"Current directory changed"_s);
        Type(window, NativePath(desk, "site"));
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\site\\"));
        QTest::keyClick(&Path(window), Qt::Key_Return); // once more
        QVERIFY(!desk.Exists("site/a.htm"));
        QCOMPARE(desk.boxes.texts, QStringList());
    }

    void ATypedPathThatLeadsNowhereIsToldAndCanBeMended()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        Type(window, u"C:\\gone"_s);
        QCOMPARE(desk.boxes.texts,
                 QStringList{u"there is no folder C:\\gone\r\nC:\\gone\r\n"
                             "Look at its spelling, and whether it was moved."_s});
        QCOMPARE(desk.Status(), u"Failed: there is no folder C:\\gone"_s);
        QCOMPARE(Path(window).text(), u"C:\\gone"_s);
        QTest::keyClick(&Path(window), Qt::Key_Escape);
        QCOMPARE(Path(window).text(), u"C:\\site\\"_s);
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\site\\"));
    }

    void ThePathIsWholeWhileItHasTheKeysAndCopiedAsTheSystemHasIt()
    {
        MainWindowDesk desk;
        const std::string folder = "site/a-folder-with-a-long-name/and-a-longer-one";
        desk.PutFolder(folder);
        const MainWindow& window =
            desk.Start("C:\\site\\a-folder-with-a-long-name\\and-a-longer-one");
        QLineEdit& path = Path(window);
        QVERIFY(path.text().contains(u"..."_s));
        path.setFocus();
        QCOMPARE(path.text(), u"C:\\site\\a-folder-with-a-long-name\\and-a-longer-one\\"_s);
        QTest::keySequence(&path, QKeySequence::Copy);
        const QString native = NativePath(desk, folder);
        QCOMPARE(QDir::cleanPath(QGuiApplication::clipboard()->text()), QDir::cleanPath(native));
        Find<QPushButton>(window, u"Command1"_s).setFocus();
        QVERIFY(path.text().contains(u"..."_s));
        QCOMPARE(QDir::cleanPath(Find<QLabel>(window, u"NativePath"_s).text()),
                 QDir::cleanPath(native));
    }

    void ADroppedFolderBecomesTheWorkingDirectory()
    {
        MainWindowDesk desk;
        desk.PutFolder("site/lab");
        const MainWindow& window = desk.Start();
        QMimeData dragged;
        dragged.setUrls({QUrl::fromLocalFile(NativePath(desk, "site/lab"))});
        auto& button = Find<QPushButton>(window, u"Command2"_s);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&button, &enter);
        QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&button, &drop);
        QTRY_COMPARE(desk.Window().workspace().WorkDir, std::string("C:\\site\\lab\\"));
    }

    void RecentFoldersAreInAMenuOfTheirOwn()
    {
        MainWindowDesk desk;
        desk.PutFolder("site/lab");
        const MainWindow& window = desk.Start();
        Type(window, u"lab"_s);
        const QMenu& menu = Find<QMenu>(window, u"mnu_recent"_s);
        QStringList entries;
        for (const QAction* const action : menu.actions())
            if (action->isVisible())
                entries << Seen(action->text());
        QCOMPARE(entries, (QStringList{u"C:\\site\\lab\\"_s, u"C:\\site\\"_s}));
        desk.ChooseEntry(u"mnu_recent(1)"_s);
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\site\\"));
    }

    void AJumpIntoAGroupLeavesTheKeysWithTheBuild()
    {
        MainWindowDesk desk;
        desk.Put("group/_group.txt", "lab\r\n");
        desk.Put("utils/kivjump.ini", "Group|C:\\group\r\n");
        MainWindow& window = desk.Start();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).hasFocus());
        desk.ChooseEntry(u"mnu_jumpto(0)"_s);
        QVERIFY(Find<QPushButton>(window, u"Command10"_s).hasFocus());
    }

    void NothingIsRenamedBeforeItWasSeen()
    {
        MainWindowDesk desk;
        desk.Put("site/A B.htm");
        MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_dirfix"_s);
        QVERIFY(desk.Exists("site/A B.htm"));
        QCOMPARE(Look(window).windowTitle(), u"Fix names"_s);
        QCOMPARE(LookText(window), u"1 file will be renamed."_s);
        QCOMPARE(Find<QTreeView>(Look(window), u"pairs"_s).model()->rowCount(), 1);
        QCOMPARE(Faults(Look(window)), QString());
        Press(Look(window), u"cancel"_s);
        QVERIFY(desk.Exists("site/A B.htm"));
        desk.ChooseEntry(u"mnu_addt"_s);
        QCOMPARE(LookText(window),
                 u"No GIF or JPEG picture here lacks its \"_t\": nothing to rename."_s);
        desk.ChooseEntry(u"mnu_dirfix"_s);
        Press(Look(window), u"rename"_s);
        QVERIFY(!Look(window).isVisible());
        QCOMPARE(desk.Status(), u"Names fixed"_s);
        QCOMPARE(desk.NamesIn("site"), Texts{"a-b.htm"});
    }

    void FilesThatCameSinceTheLookAreShownAndNotRenamed()
    {
        MainWindowDesk desk;
        desk.Put("site/A B.htm");
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_dirfix"_s);
        desk.Put("site/C D.htm");
        Press(Look(window), u"rename"_s);
        QVERIFY(Look(window).isVisible());
        QCOMPARE(desk.NamesIn("site"), (Texts{"A B.htm", "C D.htm"}));
        QCOMPARE(
            LookText(window),
            u"2 files will be renamed. The files have changed since they were shown: look again."_s);
        Press(Look(window), u"rename"_s);
        QCOMPARE(desk.NamesIn("site"), (Texts{"a-b.htm", "c-d.htm"}));
    }

    void AtARootNamesAreLowerCasedAfterALookAlone()
    {
        MainWindowDesk desk;
        desk.Put("README");
        const MainWindow& window = desk.Start();
        const Texts started{"c:\\utils\\dosutils\\case *.* /l"};
        desk.ChooseEntry(u"mnu_lc"_s);
        QCOMPARE(desk.programs.Launched(), started);
        QCOMPARE(desk.Status(), u"Lower-casing of the file names started"_s);
        Type(window, u"C:\\"_s);
        desk.ChooseEntry(u"mnu_lc"_s);
        QCOMPARE(desk.programs.Launched(), started); // not again
        QCOMPARE(Look(window).windowTitle(), u"l/c dir"_s);
        QCOMPARE(LookText(window),
                 u"1 file gets a name in lower case. This is the root of a drive."_s);
        Press(Look(window), u"rename"_s);
        QCOMPARE(desk.programs.Launched().size(), std::size_t{2});
        QVERIFY(!Look(window).isVisible());
    }

    void RenamesAreTakenBackAlsoAfterARestart()
    {
        MainWindowDesk desk;
        desk.Put("site/A B.htm");
        desk.Start().workspace();
        desk.Window().workspace().RecordsFolder = "C:\\state\\kiv\\renames";
        desk.ChooseEntry(u"mnu_dirfix"_s);
        Press(Look(desk.Window()), u"rename"_s);
        QCOMPARE(desk.boxes.texts, QStringList()); // nothing is amiss with the record
        desk.EndWindow();
        const MainWindow& window = desk.Start();
        desk.Window().workspace().RecordsFolder = "C:\\state\\kiv\\renames";
        desk.ChooseEntry(u"mnu_undorenames"_s);
        QCOMPARE(LookText(window), u"1 name will come back."_s);
        QVERIFY(desk.Exists("site/a-b.htm"));
        Press(Look(window), u"rename"_s);
        QCOMPARE(desk.NamesIn("site"), Texts{"A B.htm"});
        QCOMPARE(desk.Status(), u"1 file has its old name again"_s);
        desk.ChooseEntry(u"mnu_undorenames"_s);
        QCOMPARE(LookText(window),
                 u"No renaming of this folder is on record, or it was undone already."_s);
        QVERIFY(!Find<QPushButton>(Look(window), u"rename"_s).isEnabled());
    }

    void ARenameThatStopsIsToldAndTheLookStays()
    {
        MainWindowDesk desk;
        desk.Put("site/a b");
        desk.Put("site/a-b");
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_dirfix"_s);
        QCOMPARE(LookText(window), u"No file will be renamed: the run stops at the first one."_s);
        Press(Look(window), u"rename"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(desk.Status().startsWith(u"Failed: cannot rename C:\\site\\a b to "_s));
        QVERIFY(Look(window).isVisible());
        QCOMPARE(desk.NamesIn("site"), (Texts{"a b", "a-b"}));
    }

    void EscapeStopsABuildBetweenTwoFiles()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        MainWindow& window = desk.Start();
        BuildAnd(desk, [&] { QTest::keyClick(&window, Qt::Key_Escape); });
        QCOMPARE(desk.Status(), u"Stopped after 1 of 3 files"_s);
        QVERIFY(desk.Content("site/a.htm").ends_with("\r\n"));
        QVERIFY(!desk.Exists("site/b.htm"));
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).isEnabled());
        Press(window, u"Command1"_s);
        QCOMPARE(desk.Status(), u"3 files written"_s);
    }

    void TheButtonBesideTheBarStopsAsWell()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        const MainWindow& window = desk.Start();
        auto& stop = Find<QToolButton>(window, u"StopWork"_s);
        QVERIFY(!stop.isVisible());
        BuildAnd(desk, [&] {
            stop.click();
            QCOMPARE(desk.Status(), u"Stopping as soon as the file in work is finished"_s);
        });
        QCOMPARE(desk.Status(), u"Stopped after 1 of 3 files"_s);
        QVERIFY(!stop.isVisible());
    }

    void ClosingStopsFirstAndSaysSo()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        MainWindow& window = desk.Start();
        BuildAnd(desk, [&] {
            window.close();
            QVERIFY(window.isVisible());
            QCOMPARE(desk.Status(), u"Closing as soon as the file in work is finished"_s);
        });
        QVERIFY(!window.isVisible());
        QVERIFY(desk.Exists("site/a.htm"));
        QVERIFY(!desk.Exists("site/b.htm"));
    }

    void EscapeStopsACheckBetweenTwoPages()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        MainWindow& window = desk.Start();
        auto& stop = Find<QToolButton>(window, u"StopWork"_s);
        for (const bool by_button : {false, true}) {
            int looks = 0;
            desk.clock.on_look = [&] {
                if (++looks == 2 && by_button)
                    stop.click();
                else if (looks == 2)
                    QTest::keyClick(&window, Qt::Key_Escape);
            };
            desk.ChooseEntry(u"mnu_check"_s);
            desk.clock.on_look = nullptr;
            QCOMPARE(desk.Status(), u"Stopped after 2 of 3 files"_s);
            QCOMPARE(desk.NamesIn("site"), (Texts{"_html.txt", "_template.txt"}));
            QVERIFY(!stop.isVisible());
        }
        desk.ChooseEntry(u"mnu_check"_s);
        QVERIFY(desk.Status().startsWith(u"Check: "_s));
    }

    void AGroupBuildThatIsStoppedIsBackInItsFolder()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        desk.Put("site/_group.txt", "lab\r\n");
        desk.PutFolder("site/lab");
        MainWindow& window = desk.Start();
        desk.clock.on_look = [&] { QTest::keyClick(&window, Qt::Key_Escape); };
        Press(window, u"Command11"_s);
        QCOMPARE(desk.Status(), u"Stopped after 1 of 3 files"_s);
        QCOMPARE(Find<QLabel>(window, u"Label4"_s).text(), QString());
        QCOMPARE(window.workspace().WorkDir, std::string("C:\\site\\"));
    }

    void TheStatusIsThatOfTheLastCommand()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        desk.Put("utils/kivjump.ini", "Here|C:\\site\r\n");
        const MainWindow& window = desk.Start();
        const auto after = [&](const QString& entry) {
            desk.ChooseEntry(entry);
            return desk.Status();
        };
        Press(window, u"Command1"_s);
        QCOMPARE(desk.Status(), u"3 files written"_s);
        QCOMPARE(after(u"mnu_jumpto(0)"_s), u"Current directory changed"_s);
        QCOMPARE(after(u"mnu_NewYear"_s), u"New Year switch on"_s);
        QCOMPARE(after(u"mnu_reloadjumpto"_s), u"Jump to list read again"_s);
        QCOMPARE(after(u"mnu_editftplist"_s), u"Upload list opened in the editor"_s);
        Press(window, u"Command2"_s);
        QCOMPARE(desk.Status(), u"_template.txt opened in the editor"_s);
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n!++gone.htm\r\n");
        Press(window, u"Command1"_s);
        QVERIFY(desk.Status().startsWith(u"Failed: "_s));
    }

    void EntriesWithNothingToDoAreGreyAndSayWhy()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        QVERIFY(!Entry(window, u"mnu_sitemap"_s).isEnabled());
        QCOMPARE(Entry(window, u"mnu_sitemap"_s).toolTip(),
                 u"There is no group list (_group.txt) here"_s);
        QVERIFY(!Entry(window, u"mnu_singlehtml"_s).isEnabled());
        desk.Put("site/_singlehtml.txt");
        desk.ChooseEntry(u"mnu_NewYear"_s); // any command looks again
        QVERIFY(Entry(window, u"mnu_singlehtml"_s).isEnabled());
        QCOMPARE(Entry(window, u"mnu_singlehtml"_s).toolTip(),
                 u"Build all pages into _singlehtml.txt when that file exists"_s);
    }

    void TheUploadListCountsWithoutARestart()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        QVERIFY(!Find<QPushButton>(window, u"Command12"_s).isVisible());
        desk.Put("utils/ftplist.txt", "c:\\site\\|send\r\n"); // the editor has saved it
        QEvent back(QEvent::ActivationChange);
        desk.Window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&desk.Window()));
        QApplication::sendEvent(&desk.Window(), &back);
        QVERIFY(Find<QPushButton>(window, u"Command12"_s).isVisible());
    }

    void ExitLeavesADefaultAloneThatIsNotThereToday()
    {
        MainWindowDesk desk;
        desk.Put("utils/kiv.ini", "C:\\usb\\site\\\r\n");
        const MainWindow& window = desk.Start(std::nullopt);
        QCOMPARE(desk.Status(), u"The folder of the start is not there: C:\\usb\\site\\"_s);
        Press(window, u"Command3"_s);
        QVERIFY(!window.isVisible());
        QCOMPARE(desk.Content("utils/kiv.ini"), std::string("C:\\usb\\site\\\r\n"));
    }

    void AnErrorsBoxSaysThatItIsOne()
    {
        MainWindowDesk desk;
        PutThreePages(desk);
        desk.Put("site/_html.txt", "@FILE = a\r\n@TITLE = A\r\n!++gone.htm\r\n");
        const MainWindow& window = desk.Start();
        QString title;
        desk.boxes.on_box = [&](const QMessageBox& box) {
            title = box.windowTitle();
            QCOMPARE(box.icon(), QMessageBox::Critical);
        };
        Press(window, u"Command1"_s);
        QCOMPARE(title, u"kiv: \"Do it!\" has failed"_s);
        desk.ChooseEntry(u"mnu_rename"_s);
        auto& rename = Find<QWidget>(window, u"RenameWindow"_s);
        rename.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&rename));
        desk.Window().Run([] { throw RunError(ErrorKind::file, "no disk", {}); });
        QCOMPARE(title, u"kiv: \"Rename files\" has failed"_s);
    }

    void TheNewsWindowFitsASmallScreen()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_newnews"_s);
        const QWidget& news = Find<QWidget>(window, u"NewsWindow"_s);
        QVERIFY2(news.minimumSizeHint().height() <= 440,
                 qPrintable(QString::number(news.minimumSizeHint().height())));
        QVERIFY(news.height() <= news.screen()->availableGeometry().height());
    }
};

const WindowTestOf<WorkTest> work_window("work");

} // namespace kiv

#include "work_window_test.moc"
