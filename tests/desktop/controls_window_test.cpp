// The controls of the main window: names, captions, order, what is shown and what is greyed.
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QAction>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>

namespace kiv {

using namespace Qt::StringLiterals;

class ControlsTest : public QObject {
    Q_OBJECT

    using Names = QStringList;

    /// The buttons that are shown, in the order of Tab.
    static Names ShownButtons(const MainWindow& window)
    {
        Names names;
        const QWidget* const first = &Find<QLineEdit>(window, u"Text2"_s);
        for (const QWidget* at = first->nextInFocusChain(); at != first;
             at = at->nextInFocusChain())
            if (qobject_cast<const QPushButton*>(at) != nullptr && at->isVisible() &&
                at->window() == &window)
                names << at->objectName();
        return names;
    }

    /// "name=caption" of each entry that can be seen; greyed ones in brackets, a separator "-".
    static Names Entries(const MainWindow& window, const QString& menu)
    {
        Names entries;
        for (const QAction* const action : Find<QMenu>(window, menu).actions()) {
            if (!action->isVisible())
                continue;
            const QString name = action->objectName();
            const QString entry =
                action->isSeparator() ? name + u" -"_s : name + u'=' + Seen(action->text());
            entries << (action->isEnabled() ? entry : u'(' + entry + u')');
        }
        return entries;
    }

    static void HaveALetterEach(const QStringList& texts)
    {
        QSet<QString> letters;
        for (const QString& text : texts) {
            const QString letter = QKeySequence::mnemonic(text).toString();
            QVERIFY2(!letter.isEmpty(), qPrintable(text));
            QVERIFY2(!letters.contains(letter), qPrintable(text));
            letters.insert(letter);
        }
    }

  private slots:
    void ButtonsHaveTheirCaptions()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        const QList<QPair<QString, QString>> captions = {
            {u"Command1"_s, u"Do it!"_s},    {u"Command2"_s, u"template"_s},
            {u"Command3"_s, u"Exit"_s},      {u"Command4"_s, u"Choose directory"_s},
            {u"Command5"_s, u"content"_s},   {u"Command6"_s, u"Dir window"_s},
            {u"Command7"_s, u"Store dir"_s}, {u"Command8"_s, u"Dir 1"_s},
            {u"Command9"_s, u"Dir 2"_s},     {u"Command10"_s, u"do one"_s},
            {u"Command11"_s, u"group"_s},    {u"Command12"_s, u"Upload"_s},
        };
        for (const auto& [name, caption] : captions)
            QCOMPARE(Seen(Find<QPushButton>(window, name).text()), caption);
        QCOMPARE(Find<QLabel>(window, u"Label1"_s).text(), u"Current directory:"_s);
        QCOMPARE(desk.Status(), u"Change directory or \"do it\""_s);
        QCOMPARE(Find<QLabel>(window, u"Label4"_s).text(), QString());
        QCOMPARE(window.windowTitle(), u"kiv"_s);
        QCOMPARE(desk.boxes.texts, QStringList());
    }

    void MenusStandInOrder()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        Names menus;
        for (const QAction* const action : window.menuBar()->actions()) {
            const QObject& named =
                action->menu() != nullptr ? static_cast<const QObject&>(*action->menu()) : *action;
            menus << named.objectName() + u'=' + Seen(action->text());
        }
        QCOMPARE(menus, (Names{u"menu_file=File"_s, u"mnu_jump=Jump to"_s, u"mnu_grab=Utils"_s,
                               u"Grab_head=Grab"_s, u"menu_help=Help"_s, u"menu_site=Site"_s}));
        QCOMPARE(Entries(window, u"menu_file"_s),
                 (Names{u"mnu_zu=Lanthorn"_s, u"mnu_lc=l/c dir"_s, u"mnu_rename=Rename files"_s,
                        u"mnu_dirfix=Fix names"_s, u"mnu_addt=add \"_t.gif\""_s,
                        u"mnu_resizer=Calculate dimensions"_s, u"(openhtmls=Open all html.txt)"_s,
                        u"(mnu_alltemplates=Open all templates)"_s, u"mnu_ptop2 -"_s,
                        u"mnu_editftplist=Edit FTP list"_s, u"mnu_editftpbat=Edit FTP bat file"_s,
                        u"mnu_dash -"_s, u"menu_file_quit=Quit"_s}));
        QCOMPARE(
            Entries(window, u"mnu_grab"_s),
            (Names{u"mnu_fixemail=Convert to HTML"_s, u"mnu_news=News header"_s,
                   u"getnames=Extract name fields"_s, u"mnu_cleanquotes=Clean quotes etc."_s,
                   u"mnu_rs=Make x=rs(\"x\") from tab delim"_s, u"menu_js=make into js write"_s,
                   u"mnu_ptop=<p>...</p>"_s, u"mnu_tabpipe=Tab to Pipe"_s,
                   u"mnu_piclist=picture sizer"_s, u"mnu_picsizeimage=picture sizer (images)"_s,
                   u"mnu_NewYear=Toggle New Year"_s, u"(mnu_sitemap=Assemble Site Map)"_s,
                   u"(mnu_singlehtml=Create single html)"_s, u"mnu_newnews=New News"_s}));
        QCOMPARE(Entries(window, u"Grab_head"_s),
                 (Names{u"menu_utils_grab=Grab titles"_s, u"grab_redirect=Grab & redirect"_s,
                        u"mnu_graball=Grab all"_s, u"mnu_graball_trim=Grab all trimmed"_s}));
        QCOMPARE(Entries(window, u"menu_site"_s),
                 (Names{u"mnu_check=Check"_s, u"mnu_why=Why does a line look so?"_s,
                        u"mnu_preview=Preview"_s, u"mnu_showpage=Show page in browser"_s,
                        u"mnu_buildsave=Build on save"_s, u"mnu_undorenames=Undo renames"_s,
                        u"mnu_thumbs=Make thumbnails"_s, u"mnu_encode=Change encoding"_s,
                        u"mnu_feed=Write feeds"_s, u"mnu_sitemapxml=Write XML site map"_s,
                        u"(mnu_uploadchanges=Upload changed pages)"_s,
                        u"mnu_recent=Recent folders"_s, u"mnu_readagain=Read again"_s,
                        u"mnu_beginsite=Begin a site"_s, u"mnu_adopt=Adopt pages..."_s,
                        u"mnu_editor=Choose an editor"_s, u"mnu_manual=Manual"_s}));
    }

    void CommandsHaveTheirKeys()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        const QList<QPair<QString, QKeySequence>> keys = {
            {u"menu_file_quit"_s, Qt::CTRL | Qt::Key_Q},
            {u"menu_help"_s, Qt::Key_F1},
            {u"mnu_readagain"_s, Qt::Key_F5},
            {u"mnu_preview"_s, Qt::Key_F6},
            {u"mnu_showpage"_s, Qt::SHIFT | Qt::Key_F6},
            {u"mnu_check"_s, Qt::Key_F7},
            {u"mnu_why"_s, Qt::Key_F8},
        };
        for (const auto& [name, key] : keys)
            QCOMPARE(window.findChild<QAction*>(name)->shortcut(), key);
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).toolTip().endsWith(u"(Ctrl+B)"_s));
        QVERIFY(Find<QPushButton>(window, u"Command4"_s).toolTip().endsWith(u"(Ctrl+O)"_s));
    }

    void TabGoesRoundAllOfTheWindow()
    {
        MainWindowDesk desk;
        MainWindow& window = desk.Start();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        for (const auto& [tab, last] : {std::pair(0, u"Pages"_s), std::pair(1, u"story"_s),
                                        std::pair(2, u"CopyMessages"_s)}) {
            Find<QTabWidget>(window, u"WorkPane"_s).setCurrentIndex(tab);
            Find<QLineEdit>(window, u"Text2"_s).setFocus();
            QStringList reached;
            do {
                QTest::keyClick(&window, Qt::Key_Tab);
                reached << QApplication::focusWidget()->objectName();
            } while (reached.last() != u"Text2"_s && reached.size() < 60);
            for (const QString& name : {u"Command1"_s, u"Command3"_s, u"Panes"_s, last, u"Text2"_s})
                QVERIFY2(reached.contains(name),
                         qPrintable(name + u" not in "_s + reached.join(u' ')));
        }
    }

    // The window never changes its height, so all of it has to fit in beforehand.
    void EverythingFitsOnASmallScreen()
    {
        MainWindowDesk desk;
        desk.Put("utils/ftplist.txt", "c:\\site\\|send it\r\n");
        MainWindow& window = desk.Start();
        for (int tab = 0; tab < 3; ++tab) {
            Find<QTabWidget>(window, u"WorkPane"_s).setCurrentIndex(tab);
            const QSize least = window.minimumSizeHint();
            QVERIFY2(least.width() <= 792 && least.height() <= 440,
                     qPrintable(u"%1 x %2"_s.arg(least.width()).arg(least.height())));
        }
    }

    void JumpMenuShowsItsEntries()
    {
        MainWindowDesk desk;
        desk.Put("utils/kivjump.ini", "R & D|C:\\site\\lab\r\nMuseum|C:\\site\r\n");
        const MainWindow& window = desk.Start();
        const Names both = {u"mnu_jumpto(0)=R & D"_s, u"mnu_jumpto(1)=Museum"_s, u"mnu_rule -"_s,
                            u"mnu_editjump=Edit Jump to list"_s,
                            u"mnu_reloadjumpto=Reload Jump to list"_s};
        QCOMPARE(Entries(window, u"mnu_jump"_s), both);
        desk.Put("utils/kivjump.ini", "Quay|C:\\site\r\n");
        desk.ChooseEntry(u"mnu_reloadjumpto"_s);
        QCOMPARE(
            Entries(window, u"mnu_jump"_s),
            (Names{u"mnu_jumpto(0)=Quay"_s, u"mnu_rule -"_s, u"mnu_editjump=Edit Jump to list"_s,
                   u"mnu_reloadjumpto=Reload Jump to list"_s}));
        const auto* const last = window.findChild<QAction*>(u"mnu_jumpto(9)"_s);
        QVERIFY(last != nullptr);
        QCOMPARE(last->text(), u"jumpitem"_s); // never filled
        QVERIFY(window.findChild<QAction*>(u"mnu_jumpto(10)"_s) == nullptr);
    }

    void PlainFolder()
    {
        MainWindowDesk desk;
        QCOMPARE(ShownButtons(desk.Start()),
                 (Names{u"Command1"_s, u"Command2"_s, u"Command5"_s, u"Command6"_s, u"Command7"_s,
                        u"Command4"_s, u"Command3"_s}));
    }

    void GroupFolder()
    {
        MainWindowDesk desk;
        desk.Put("site/_group.txt", "lab\r\n");
        desk.Put("utils/kivjump.ini", "out|C:\\\r\n");
        const MainWindow& window = desk.Start();
        QCOMPARE(ShownButtons(window),
                 (Names{u"Command10"_s, u"Command11"_s, u"Command2"_s, u"Command5"_s, u"Command6"_s,
                        u"Command7"_s, u"Command4"_s, u"Command3"_s}));
        const Names entries = Entries(window, u"menu_file"_s);
        QVERIFY(entries.contains(u"openhtmls=Open all html.txt"_s));
        QVERIFY(entries.contains(u"mnu_alltemplates=Open all templates"_s));
        desk.ChooseEntry(u"mnu_jumpto(0)"_s);
        QVERIFY(ShownButtons(window).contains(u"Command1"_s));
        QVERIFY(!ShownButtons(window).contains(u"Command10"_s));
        QVERIFY(Entries(window, u"menu_file"_s).contains(u"(openhtmls=Open all html.txt)"_s));
    }

    void FolderWithAnUploadEntry()
    {
        MainWindowDesk desk;
        desk.Put("utils/ftplist.txt", "c:\\SITE\\|send it\r\n");
        const MainWindow& window = desk.Start();
        QVERIFY(ShownButtons(window).contains(u"Command12"_s));
        Press(window, u"Command12"_s);
        QCOMPARE(desk.programs.Launched(),
                 Texts{"C:\\progs\\WS_FTP Pro\\ftp95pro.exe -m c:\\guestout2.bat"});
    }

    void OutputRoots()
    {
        MainWindowDesk desk;
        desk.Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/_html.txt", "@ASP = asp\r\n@HTM = htm\r\n@FILE = a\r\n@TITLE = A\r\n");
        std::filesystem::create_directories(desk.Native("site/asp"));
        std::filesystem::create_directories(desk.Native("site/htm"));
        const MainWindow& window = desk.Start();
        Press(window, u"Command1"_s);
        const Names shown = {u"Command1"_s, u"Command2"_s, u"Command5"_s, u"Command8"_s,
                             u"Command9"_s, u"Command7"_s, u"Command4"_s, u"Command3"_s};
        QCOMPARE(ShownButtons(window), shown);
        Press(window, u"Command8"_s);
        Press(window, u"Command9"_s);
        QCOMPARE(desk.programs.Launched(),
                 (Texts{"explorer C:\\site\\asp\\", "explorer C:\\site\\htm\\"}));
        Press(window, u"Command4"_s); // "Choose directory"
        QVERIFY(ShownButtons(window).contains(u"Command6"_s));
        QVERIFY(!ShownButtons(window).contains(u"Command8"_s));
    }

    void PathIsShortenedAndWholeInTheTip()
    {
        MainWindowDesk desk;
        std::filesystem::create_directories(
            desk.Native("site/a-folder-with-a-long-name/and-a-longer-one-in-it"));
        const MainWindow& window =
            desk.Start("C:\\site\\a-folder-with-a-long-name\\and-a-longer-one-in-it");
        const QLineEdit& path = Find<QLineEdit>(window, u"Text2"_s);
        QCOMPARE(path.text(), u"C:\\sit...g-name\\and-a-longer-one-in-it\\"_s);
        QCOMPARE(path.toolTip(),
                 u"C:\\site\\a-folder-with-a-long-name\\and-a-longer-one-in-it\\"_s);
        QVERIFY(!path.isReadOnly());
    }

    void NothingIsWithoutNameTipOrLetter()
    {
        MainWindowDesk desk;
        desk.Put("utils/kivjump.ini", "Edit|C:\\\r\nRe|C:\\\r\nEra|C:\\\r\n");
        desk.Put("utils/ftplist.txt", "c:\\site\\|send it\r\n");
        const MainWindow& window = desk.Start();
        for (int tab = 0; tab < 3; ++tab) {
            Find<QTabWidget>(window, u"WorkPane"_s).setCurrentIndex(tab);
            QCOMPARE(Faults(window), QString());
        }
        QStringList letters; // Alt reaches menus and buttons alike
        for (const QAction* const action : window.menuBar()->actions())
            letters << action->text();
        for (const QPushButton* const button : window.findChildren<QPushButton*>())
            letters << button->text();
        HaveALetterEach(letters);
        for (const QMenu* const menu : window.menuBar()->findChildren<QMenu*>()) {
            QStringList entries;
            for (const QAction* const action : menu->actions()) {
                if (!action->isVisible() || action->isSeparator())
                    continue;
                entries << action->text();
                QVERIFY2(!action->toolTip().isEmpty(), qPrintable(action->text()));
            }
            HaveALetterEach(entries);
        }
    }
};

const WindowTestOf<ControlsTest> controls_window("controls");

} // namespace kiv

#include "controls_window_test.moc"
