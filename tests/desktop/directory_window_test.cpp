// The window of "Choose directory".
#include "desktop/directory_window.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTreeWidget>
#include <QUrl>

namespace kiv {

using namespace Qt::StringLiterals;

class DirectoryWindowTest : public QObject {
    Q_OBJECT

    static QTreeWidget& Folders(const DirectoryWindow& window)
    {
        return Find<QTreeWidget>(window, u"Dir1"_s);
    }
    static QTreeWidgetItem* Folder(const DirectoryWindow& window, const QString& name)
    {
        const auto found = Folders(window).findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        return found.size() == 1 ? found.front() : nullptr;
    }
    static void DoubleClick(const DirectoryWindow& window, const QString& name)
    {
        QTreeWidget& folders = Folders(window);
        const QPoint at = folders.visualItemRect(Folder(window, name)).center();
        QTest::mouseClick(folders.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(folders.viewport(), Qt::LeftButton, {}, at);
    }
    /// The names in the list of folders, from the top, each level below with one more blank.
    static QStringList FolderNames(const DirectoryWindow& window)
    {
        QStringList names;
        for (QTreeWidgetItemIterator at(&Folders(window)); *at != nullptr; ++at) {
            QString depth;
            for (const QTreeWidgetItem* up = (*at)->parent(); up != nullptr; up = up->parent())
                depth += u' ';
            names << depth + (*at)->text(0);
        }
        return names;
    }
    static QStringList FileNames(const DirectoryWindow& window)
    {
        const auto& files = Find<QListWidget>(window, u"File2"_s);
        QStringList names;
        for (int i = 0; i < files.count(); ++i)
            names << files.item(i)->text();
        return names;
    }
    static QString Shown(const DirectoryWindow& window)
    {
        return Find<QLineEdit>(window, u"path"_s).text();
    }

    static void Click(const DirectoryWindow& window, const QString& name)
    {
        QTreeWidget& folders = Folders(window);
        const QPoint at = folders.visualItemRect(Folder(window, name)).center();
        QTest::mouseClick(folders.viewport(), Qt::LeftButton, {}, at);
    }
    static void Type(const DirectoryWindow& window, const QString& path)
    {
        auto& field = Find<QLineEdit>(window, u"path"_s);
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, path);
        QTest::keyClick(&field, Qt::Key_Return);
    }
    static QString NativePath(const SideWindowDesk& desk, const std::string& below)
    {
        return QString::fromStdString(test::NativeTextOf(desk.Native(below)));
    }

    static void PutSite(SideWindowDesk& desk)
    {
        desk.Put("site/_html.txt");
        desk.Put("site/images/boat.gif");
        desk.Put("site/txt/a.txt");
        desk.Put("readme.txt");
    }

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(Seen(Find<QPushButton>(window, u"choose"_s).text()), u"Choose"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"lower_case"_s).text()), u"l/c dir"_s);
        QCOMPARE(Seen(Find<QPushButton>(window, u"cancel"_s).text()), u"Cancel"_s);
        QCOMPARE(Faults(window), QString());
        QVERIFY(!window.isModal());
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(TabOrder(window, u"path"_s),
                 (QStringList{u"path"_s, u"Drive1"_s, u"Dir1"_s, u"File2"_s, u"choose"_s,
                              u"lower_case"_s, u"add_jump"_s, u"cancel"_s}));
    }

    void StartsAtTheWorkingDirectoryEachTime()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(Find<QComboBox>(window, u"Drive1"_s).currentText(), u"C:"_s);
        QCOMPARE(FolderNames(window),
                 (QStringList{u"C:\\"_s, u" site"_s, u"  images"_s, u"  txt"_s}));
        QCOMPARE(Folders(window).currentItem(), Folder(window, u"site"_s));
        QCOMPARE(FileNames(window), QStringList{u"_html.txt"_s});
        QCOMPARE(Shown(window), u"C:\\site"_s);
        DoubleClick(window, u"txt"_s);
        Press(window, u"cancel"_s);
        QVERIFY(!window.isVisible());
        window.BringUp();
        QCOMPARE(Shown(window), u"C:\\site"_s);
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\site\\"));
    }

    void ListsFollowEachOther()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        DoubleClick(window, u"images"_s); // down
        QCOMPARE(FolderNames(window), (QStringList{u"C:\\"_s, u" site"_s, u"  images"_s}));
        QCOMPARE(FileNames(window), QStringList{u"boat.gif"_s});
        QCOMPARE(Shown(window), u"C:\\site\\images"_s);
        DoubleClick(window, u"C:\\"_s); // up
        QCOMPARE(FolderNames(window), (QStringList{u"C:\\"_s, u" site"_s, u" utils"_s}));
        QCOMPARE(FileNames(window), QStringList{u"readme.txt"_s});
        QCOMPARE(Shown(window), u"C:\\"_s);
    }

    void DriveLeadsToItsRoot()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        auto& drives = Find<QComboBox>(window, u"Drive1"_s);
        const int other = drives.findText(u"Z:"_s); // the whole machine
        QVERIFY(other >= 0);
        drives.setCurrentIndex(other);
        QCOMPARE(Shown(window), u"Z:\\"_s);
        QCOMPARE(FolderNames(window).front(), u"Z:\\"_s);
        QVERIFY(FolderNames(window).contains(u" tmp"_s));
        drives.setCurrentIndex(drives.findText(u"C:"_s));
        QCOMPARE(Shown(window), u"C:\\"_s);
        QCOMPARE(FileNames(window), QStringList{u"readme.txt"_s});
    }

    void EnterOpensAFolderAndDoesNotChoose()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QTreeWidget& folders = Folders(window);
        folders.setFocus();
        QTest::keyClick(&folders, Qt::Key_Down); // from the folder itself to the first one in it
        QTest::keyClick(&folders, Qt::Key_Return);
        QCOMPARE(Shown(window), u"C:\\site\\images"_s);
        QCOMPARE(FolderNames(window), (QStringList{u"C:\\"_s, u" site"_s, u"  images"_s}));
        QVERIFY(window.isVisible());
        QTest::keyClick(&folders, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\site\\"));
    }

    void ChooseMakesItTheWorkingDirectory()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        DoubleClick(window, u"txt"_s);
        Press(window, u"choose"_s);
        QVERIFY(!window.isVisible());
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\site\\txt\\"));
        window.BringUp();
        DoubleClick(window, u"C:\\"_s);
        auto& file_list = Find<QListWidget>(window, u"File2"_s);
        file_list.setFocus();
        QTest::keyClick(&file_list, Qt::Key_Return); // there it is the button
        QVERIFY(!window.isVisible());
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\")); // one separator at a root
    }

    void LowerCaseActsOnTheFolderShown()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        DoubleClick(window, u"images"_s);
        Press(window, u"lower_case"_s);
        DoubleClick(window, u"C:\\"_s);
        Press(window, u"lower_case"_s);
        QCOMPARE(desk.programs.Launched(),
                 Texts{"c:\\utils\\dosutils\\case C:\\site\\images\\*.* /l"});
        QCOMPARE(desk.looks, Texts{"l/c dir C:\\"}); // at a root the names are seen before
        QCOMPARE(desk.words.status, std::string("Lower-casing of the file names started"));
        QVERIFY(window.isVisible());
    }

    void FolderThatIsGoneLeavesTheLists()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        std::filesystem::remove_all(desk.Native("site/txt"));
        DoubleClick(window, u"txt"_s);
        QCOMPARE(desk.words.shown, Texts{"cannot open the folder C:\\site\\txt\r\nC:\\site\\txt\r\n"
                                         "Look at its spelling, and whether it was moved."});
        QCOMPARE(Shown(window), u"C:\\site"_s);
        QCOMPARE(FolderNames(window), (QStringList{u"C:\\"_s, u" site"_s, u"  images"_s}));
    }

    void WorkingDirectoryThatIsGoneShowsTheRoot()
    {
        SideWindowDesk desk;
        PutSite(desk);
        std::filesystem::remove_all(desk.Native("site"));
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(desk.words.shown.size(), std::size_t{1});
        QCOMPARE(Shown(window), u"C:\\"_s);
    }

    void WhatIsSelectedIsWhatTheButtonsTake()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        Click(window, u"images"_s);
        QCOMPARE(FolderNames(window), // nothing was gone into
                 (QStringList{u"C:\\"_s, u" site"_s, u"  images"_s, u"  txt"_s}));
        QCOMPARE(FileNames(window), QStringList{u"boat.gif"_s});
        QCOMPARE(Shown(window), u"C:\\site\\images"_s);
        Press(window, u"lower_case"_s);
        QCOMPARE(desk.programs.Launched(),
                 Texts{"c:\\utils\\dosutils\\case C:\\site\\images\\*.* /l"});
        QTest::keyClick(&Folders(window), Qt::Key_Down);
        Press(window, u"choose"_s);
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\site\\txt\\"));
        QCOMPARE(desk.words.status, std::string("Current directory changed"));
    }

    void APathIsTyped()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        Type(window, u"c:/site/TXT"_s);
        QCOMPARE(Shown(window), u"C:\\site\\TXT"_s);
        QCOMPARE(FileNames(window), QStringList{u"a.txt"_s});
        QVERIFY(window.isVisible()); // Enter is not the button's as well
        Type(window, NativePath(desk, "site/images"));
        QCOMPARE(Shown(window), u"C:\\site\\images"_s);
        Type(window, u"C:\\gone"_s);
        QCOMPARE(desk.words.shown, Texts{"there is no folder C:\\gone\r\nC:\\gone\r\n"
                                         "Look at its spelling, and whether it was moved."});
        QCOMPARE(Shown(window), u"C:\\gone"_s); // to be mended
        QTest::keyClick(&Find<QLineEdit>(window, u"path"_s), Qt::Key_Escape);
        QCOMPARE(Shown(window), u"C:\\site\\images"_s);
        QVERIFY(window.isVisible());
    }

    void ATypedPathIsCompleted()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto& field = Find<QLineEdit>(window, u"path"_s);
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, u"C:\\site\\im"_s);
        QAbstractItemView* const list = field.completer()->popup();
        QVERIFY(list->isVisible());
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(field.text(), u"C:\\site\\images"_s);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(FileNames(window), QStringList{u"boat.gif"_s});
        QVERIFY(!list->isVisible());
    }

    void TheNativePathIsShownAndCopied()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        Click(window, u"images"_s);
        const QString native = NativePath(desk, "site/images");
        QCOMPARE(Find<QLabel>(window, u"native"_s).text(), native);
        QTest::keySequence(&Folders(window), QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text(), native);
        QGuiApplication::clipboard()->clear();
        auto& field = Find<QLineEdit>(window, u"path"_s);
        field.setFocus();
        QTest::keySequence(&field, QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text(), native);
        field.setSelection(3, 4); // a part of it is what it is
        QTest::keySequence(&field, QKeySequence::Copy);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"site"_s);
    }

    void TheSelectedFolderIsAddedToTheJumps()
    {
        SideWindowDesk desk;
        PutSite(desk);
        desk.Put("utils/kivjump.ini", "Docs|d:\\docs\r\n");
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        Click(window, u"txt"_s);
        Press(window, u"add_jump"_s);
        QCOMPARE(desk.Content("utils/kivjump.ini"),
                 std::string("Docs|d:\\docs\r\ntxt|C:\\site\\txt\\\r\n"));
        QCOMPARE(desk.workspace().Jumps.size(), std::size_t{2});
        QVERIFY(window.isVisible());
    }

    void AFolderIsDropped()
    {
        SideWindowDesk desk;
        PutSite(desk);
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QMimeData dragged;
        dragged.setUrls({QUrl::fromLocalFile(NativePath(desk, "site/txt"))});
        dragged.setText(u"no path"_s);
        auto& field = Find<QLineEdit>(window, u"path"_s); // would take the text
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&field, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QApplication::sendEvent(&field, &drop);
        QTRY_COMPARE(Shown(window), u"C:\\site\\txt"_s);
    }

    void NamesAreShownAsTheyAre()
    {
        SideWindowDesk desk;
        desk.PutFolder("site/R&D caf\xc3\xa9");
#ifdef Q_OS_WIN
        const QString file = u"&amp;.txt"_s; // "<" is forbidden there
#else
        const QString file = u"<b>&amp;.txt"_s;
#endif
        desk.Put("site/" + file.toStdString());
        DirectoryWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(FolderNames(window).last(), u"  R&D caf\u00e9"_s);
        QCOMPARE(FileNames(window), QStringList{file});
        DoubleClick(window, u"R&D caf\u00e9"_s);
        QCOMPARE(Shown(window), u"C:\\site\\R&D caf\u00e9"_s);
        Press(window, u"choose"_s);
        QCOMPARE(desk.workspace().WorkDir, std::string("C:\\site\\R&D caf\xe9\\"));
    }
};

const WindowTestOf<DirectoryWindowTest> directory_window("directory");

} // namespace kiv

#include "directory_window_test.moc"
