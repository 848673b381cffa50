// The windows of the commands that ask something first, or show what they would do.
#include "desktop/task_window.h"
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"
#include "tests/support/recorders.h"

#include <QAction>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QToolButton>

namespace kiv {

using namespace Qt::StringLiterals;

class TaskWindowTest : public QObject {
    Q_OBJECT

    static void PutSite(const MainWindowDesk& desk)
    {
        desk.Put("site/_template.txt", "<!--BODY HERE-->\r\n");
        desk.Put("site/_html.txt", "@FILE = index\r\n@TITLE = Caf\xe9\r\n<p>One</p>\r\n");
    }
    static TaskWindow& Window(const MainWindow& window, const QString& command)
    {
        return Find<TaskWindow>(window, u"TaskWindow-"_s + command);
    }
    static QStringList Files(const TaskWindow& window)
    {
        QStringList files;
        const QAbstractItemModel& lines = *Find<QListView>(window, u"files"_s).model();
        for (int row = 0; row < lines.rowCount(); ++row)
            files << lines.index(row, 0).data().toString();
        return files;
    }
    static bool CanRun(const TaskWindow& window)
    {
        return Find<QPushButton>(window, u"run"_s).isEnabled();
    }

  private slots:
    void init() { QSettings().clear(); }

    void EachIsWholeAndReachedByKeys()
    {
        struct Row {
            QString entry, command, title, button;
            QStringList order;
        };
        const std::vector<Row> rows = {
            {u"mnu_encode"_s,
             u"encode"_s,
             u"Change encoding"_s,
             u"Change"_s,
             {u"encoding"_s, u"files"_s, u"run"_s, u"cancel"_s}},
            {u"mnu_feed"_s,
             u"feed"_s,
             u"Write feeds"_s,
             u"Write"_s,
             {u"address"_s, u"run"_s, u"cancel"_s}},
            {u"mnu_sitemapxml"_s,
             u"sitemap-xml"_s,
             u"Write XML site map"_s,
             u"Write"_s,
             {u"address"_s, u"run"_s, u"cancel"_s}},
            {u"mnu_uploadchanges"_s,
             u"upload-changes"_s,
             u"Upload changed pages"_s,
             u"Upload"_s,
             {u"files"_s, u"run"_s, u"cancel"_s}},
            {u"mnu_adopt"_s,
             u"adopt"_s,
             u"Adopt pages..."_s,
             u"Adopt"_s,
             {u"from"_s, u"browse_from"_s, u"to"_s, u"browse_to"_s, u"run"_s, u"cancel"_s}},
        };
        MainWindowDesk desk;
        PutSite(desk);
        desk.Put("utils/ftplist.txt", "c:\\site\\|send\r\n");
        const MainWindow& main = desk.Start();
        for (const Row& row : rows) {
            desk.ChooseEntry(row.entry);
            TaskWindow& window = Window(main, row.command);
            QCOMPARE(window.windowTitle(), row.title);
            QCOMPARE(Seen(Find<QPushButton>(window, u"run"_s).text()), row.button);
            QCOMPARE(Faults(window), QString());
            QCOMPARE(TabOrder(window, row.order.front()), row.order);
            QTest::keyClick(&window, Qt::Key_Escape);
            QVERIFY(!window.isVisible());
        }
        QCOMPARE(desk.boxes.texts, QStringList());
    }

    void AnEncodingIsSeenBeforeItIsChanged()
    {
        MainWindowDesk desk;
        PutSite(desk);
        desk.Start().workspace();
        desk.Window().workspace().RecordsFolder = "C:\\state\\records";
        desk.ChooseEntry(u"mnu_encode"_s);
        const TaskWindow& window = Window(desk.Window(), u"encode"_s);
        QCOMPARE(Files(window), QStringList{u"_html.txt"_s});
        QCOMPARE(Find<QLabel>(window, u"summary"_s).text(), u"1 of 2 sources changes."_s);
        auto& encodings = Find<QComboBox>(window, u"encoding"_s);
        encodings.setCurrentText(u"Windows-1252"_s);
        QCOMPARE(Files(window), QStringList());
        QVERIFY(!CanRun(window));
        encodings.setCurrentText(u"UTF-8"_s);
        desk.Put("site/_template.txt", "caf\xe9\r\n<!--BODY HERE-->\r\n"); // saved meanwhile
        Press(window, u"run"_s);
        QCOMPARE(Files(window), (QStringList{u"_html.txt"_s, u"_template.txt"_s}));
        QVERIFY(Find<QLabel>(window, u"summary"_s).text().contains(u"have changed"_s));
        QVERIFY(desk.Content("site/_template.txt").starts_with("caf\xe9"));
        Press(window, u"run"_s);
        QVERIFY(!window.isVisible());
        QVERIFY(desk.Content("site/_template.txt").starts_with("caf\xc3\xa9"));
        QVERIFY(desk.Status().contains(u"2 "_s));
    }

    void AFailedLookLeavesNothingToPress()
    {
        MainWindowDesk desk;
        desk.Start().workspace(); // there is no site
        desk.ChooseEntry(u"mnu_encode"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(!CanRun(Window(desk.Window(), u"encode"_s)));
    }

    void AnAddressIsKeptForTheNextTime()
    {
        MainWindowDesk desk;
        PutSite(desk);
        desk.Start().workspace();
        desk.Window().workspace().RecordsFolder = "C:\\state\\records";
        Press(desk.Window(), u"Command1"_s); // what is not built yet is left out
        desk.ChooseEntry(u"mnu_sitemapxml"_s);
        const TaskWindow& window = Window(desk.Window(), u"sitemap-xml"_s);
        QVERIFY(!CanRun(window));
        auto& address = Find<QLineEdit>(window, u"address"_s);
        QTest::keyClicks(&address, u"museum"_s);
        QVERIFY(!CanRun(window));
        QVERIFY(Find<QLabel>(window, u"trouble"_s).isVisible());
        address.setText(u"https://host.example/"_s);
        QVERIFY(!Find<QLabel>(window, u"trouble"_s).isVisible());
        QTest::keyClick(&address, Qt::Key_Return); // the button
        QVERIFY(!window.isVisible());
        QVERIFY(desk.Exists("site/sitemap.xml"));
        QVERIFY(desk.Status().startsWith(u"sitemap.xml: 1 "_s));
        desk.ChooseEntry(u"mnu_feed"_s);
        QCOMPARE(Find<QLineEdit>(Window(desk.Window(), u"feed"_s), u"address"_s).text(),
                 u"https://host.example/"_s);
    }

    void PagesThatAreThereBecomeASite()
    {
        MainWindowDesk desk;
        desk.Put("old/mill/index.htm", "<html><body>Mill</body></html>\r\n");
        desk.Start().workspace();
        desk.ChooseEntry(u"mnu_adopt"_s);
        TaskWindow& window = Window(desk.Window(), u"adopt"_s);
        window.pick_folder = [&](const QString& /*title*/) {
            return QString::fromStdString(test::TextOf(desk.Native("old/mill")));
        };
        QVERIFY(!CanRun(window));
        Press(window, u"browse_from"_s);
        QVERIFY(CanRun(window));
        Press(window, u"run"_s);
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(!window.isVisible());
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\old\\mill-site\\"));
    }

    void AnUploadIsSeenAndThenDone()
    {
        MainWindowDesk desk;
        PutSite(desk);
        test::StartRecorder programs;
        programs.there.insert("send");
        desk.starter = &programs;
        desk.Put("utils/ftplist.txt", "c:\\site\\|send\r\n");
        desk.Put("site/index.htm", "<p>One</p>\r\n");
        const MainWindow& main = desk.Start();
        desk.ChooseEntry(u"mnu_uploadchanges"_s);
        const TaskWindow& window = Window(main, u"upload-changes"_s);
        QCOMPARE(Files(window), QStringList{u"index.htm"_s});
        QVERIFY(programs.started.empty());
        Press(window, u"run"_s);
        QCOMPARE(programs.started, Texts{"send"});
        QCOMPARE(desk.Status(), u"1 file sent"_s);
        QVERIFY(!window.isVisible());
    }

    // Nobody knows how long a program takes: the window shows what it waits for, and can end it.
    void AnUploadCanBeStopped()
    {
        class Endless : public test::StartRecorder {
          public:
            bool was_left_alone = false;
            int Run(const Launch& /*launch*/, std::string_view /*input*/,
                    const WhileRunning& while_running) override
            {
                for (QDeadlineTimer most(20'000); !most.hasExpired();)
                    while_running();
                was_left_alone = true;
                return 0;
            }
        } programs;
        struct Row {
            const char* command;
            QString waits, ended;
        };
        for (const Row& row : std::vector<Row>{
                 {"send", u"1 file to send, waiting for: send"_s, u"Stopped"_s},
                 {"send @@", u"index.htm"_s, u"Stopped after 0 of 1 files"_s},
             }) {
            MainWindowDesk desk;
            PutSite(desk);
            programs.there = {row.command};
            desk.starter = &programs;
            desk.Put("utils/ftplist.txt", std::string("c:\\site\\|") + row.command + "\r\n");
            desk.Put("site/index.htm", "<p>One</p>\r\n");
            const MainWindow& main = desk.Start();
            auto& stop = Find<QToolButton>(main, u"StopWork"_s);
            QString waits;
            QTimer watch;
            connect(&watch, &QTimer::timeout, &watch, [&] {
                if (!stop.isVisible() || desk.Status() != row.waits)
                    return;
                waits = desk.Status();
                watch.stop();
                stop.click();
            });
            desk.ChooseEntry(u"mnu_uploadchanges"_s);
            const TaskWindow& window = Window(main, u"upload-changes"_s);
            watch.start(10);
            Press(window, u"run"_s);
            QCOMPARE(waits, row.waits);
            QVERIFY(!programs.was_left_alone);
            QCOMPARE(desk.Status(), row.ended);
            QVERIFY(!stop.isVisible());
            QCOMPARE(desk.boxes.texts, QStringList());
            QVERIFY(window.isVisible());
            QCOMPARE(Files(window), QStringList{u"index.htm"_s}); // still to be sent
        }
    }

    void AnotherDirectoryClosesWhatIsOfThisOne()
    {
        MainWindowDesk desk;
        PutSite(desk);
        desk.PutFolder("other");
        desk.Put("utils/kivjump.ini", "Other|C:\\other\r\n");
        const MainWindow& main = desk.Start();
        desk.ChooseEntry(u"mnu_encode"_s);
        const TaskWindow& window = Window(main, u"encode"_s);
        QVERIFY(window.isVisible());
        desk.ChooseEntry(u"mnu_NewYear"_s); // any other command leaves it
        QVERIFY(window.isVisible());
        desk.ChooseEntry(u"mnu_jumpto(0)"_s);
        QVERIFY(!window.isVisible());
    }

    void ThumbnailsAreMadeAtOnce()
    {
        MainWindowDesk desk;
        desk.Put("site/dot.gif", std::string("GIF89a\x01\0\x01\0\x80\0\0\0\0\0\xff\xff\xff"
                                             "!\xf9\x04\x01\0\0\0\0,\0\0\0\0\x01\0\x01\0\0\x02\x02"
                                             "D\x01\0;",
                                             43));
        desk.Start().workspace();
        desk.ChooseEntry(u"mnu_thumbs"_s);
        QVERIFY(desk.Exists("site/dot_t.jpg"));
        QVERIFY(desk.Status().contains(u'1'));
    }
};

const WindowTestOf<TaskWindowTest> task_window("task");

} // namespace kiv

#include "task_window_test.moc"
