// Start and end of the main window: settings, messages, what is kept for the next run.
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"
#include "tests/support/recorders.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTabWidget>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class EndingTest : public QObject {
    Q_OBJECT

    static QString Path(const MainWindow& window)
    {
        return Find<QLineEdit>(window, u"Text2"_s).text();
    }

  private slots:
    void init() { QSettings().clear(); }

    void ExitSavesTheDirectory()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        Press(window, u"Command3"_s);
        QVERIFY(!window.isVisible());
        QCOMPARE(desk.Content("utils/kiv.ini"), std::string("C:\\site\\\r\n"));
    }

    void ExitThatCannotSaveStays()
    {
        MainWindowDesk desk;
        std::filesystem::create_directories(desk.Native("utils/kiv.ini"));
        const MainWindow& window = desk.Start();
        Press(window, u"Command3"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(window.isVisible());
    }

    void QuitSavesNothing()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        desk.ChooseEntry(u"menu_file_quit"_s);
        QVERIFY(!window.isVisible());
        QVERIFY(!desk.Exists("utils/kiv.ini"));
    }

    void ClosingByTheFrameIsQuit()
    {
        MainWindowDesk desk;
        MainWindow& window = desk.Start();
        desk.ChooseEntry(u"mnu_rename"_s);
        const QWidget& side = Find<QWidget>(window, u"RenameWindow"_s);
        QVERIFY(side.isVisible());
        window.close();
        QVERIFY(!window.isVisible());
        QVERIFY(!side.isVisible());
        QVERIFY(!desk.Exists("utils/kiv.ini"));
    }

    void StoreDirectoryTellsSo()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        Press(window, u"Command7"_s);
        QCOMPARE(desk.Content("utils/kiv.ini"), std::string("C:\\site\\\r\n"));
        QCOMPARE(desk.Status(), u"Directory Saved as Default"_s);
        QVERIFY(window.isVisible());
    }

    void StartsWhereTheSettingsSay()
    {
        MainWindowDesk desk;
        desk.Put("utils/kiv.ini", "C:\\site\r\n");
        QCOMPARE(Path(desk.Start(std::nullopt)), u"C:\\site\\"_s);
    }

    void FaultsOfTheStartAreShownAndTheRestIsRead()
    {
        MainWindowDesk desk;
        std::string list;
        for (int i = 0; i < 11; ++i)
            list += "place|C:\\site\r\n";
        desk.Put("utils/kivjump.ini", list);
        desk.Put("utils/ftplist.txt", "c:\\site\\|send\r\n");
        const MainWindow& window = desk.Start();
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(Find<QPushButton>(window, u"Command12"_s).isVisible());
    }

    void EditorIsOfferedAfterTheMessage()
    {
        MainWindowDesk desk;
        std::filesystem::remove(desk.Native("utils/kiv_editpad.txt"));
        QStringList at_the_offer;
        QTimer timer;
        connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* const offer = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (offer == nullptr || offer->objectName() != u"EditorOffer"_s)
                return;
            timer.stop();
            at_the_offer = desk.boxes.texts;
            Find<QComboBox>(*offer, u"Editors"_s).setCurrentText(u" nano-window "_s);
            offer->accept();
        });
        timer.start(0);
        const MainWindow& window = desk.Start();
        QCOMPARE(at_the_offer,
                 QStringList{u"editpad.exe is missing from the c:\\utils directory.\r\n"
                             "Choose another editor in the window that comes next. The menu "
                             "\"Site\" offers them at any time."_s});
        QCOMPARE(desk.boxes.texts, at_the_offer);
        QCOMPARE(desk.Content("utils/kiv_editpad.txt"), std::string("nano-window\r\n"));
        QVERIFY(!Find<QWidget>(window, u"MessagesPane"_s).isVisible()); // the start is no command
        Press(window, u"Command2"_s);
        QCOMPARE(desk.programs.Launched(), Texts{"nano-window _template.txt"});
    }

    void AnEditorCanBeChosenAtAnyTime()
    {
        test::StartRecorder programs;
        programs.there = {"gedit", "kate"};
        MainWindowDesk desk;
        desk.starter = &programs;
        const MainWindow& window = desk.Start();
        QStringList offered;
        QString set;
        QTimer timer;
        connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* const offer = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (offer == nullptr)
                return;
            timer.stop();
            auto& editors = Find<QComboBox>(*offer, u"Editors"_s);
            set = editors.currentText();
            for (int i = 0; i < editors.count(); ++i)
                offered << editors.itemText(i);
            editors.setCurrentIndex(1);
            offer->accept();
        });
        timer.start(0);
        desk.ChooseEntry(u"mnu_editor"_s);
        QCOMPARE(set, u"pad"_s);
        QCOMPARE(offered, (QStringList{u"gedit +%l %f"_s, u"kate --line %l %f"_s}));
        QCOMPARE(desk.Content("utils/kiv_editpad.txt"), std::string("kate --line %l %f\r\n"));
        Press(window, u"Command2"_s);
        QCOMPARE(programs.started, Texts{"kate --line 1 _template.txt"});
    }

    void RefusedOfferChangesNothing()
    {
        MainWindowDesk desk;
        std::filesystem::remove(desk.Native("utils/kiv_editpad.txt"));
        QTimer timer;
        connect(&timer, &QTimer::timeout, &timer, [] {
            auto* const offer = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (offer != nullptr && offer->objectName() == u"EditorOffer"_s)
                QTest::keyClick(offer, Qt::Key_Escape);
        });
        timer.start(0);
        const MainWindow& window = desk.Start();
        QVERIFY(!desk.Exists("utils/kiv_editpad.txt"));
        Press(window, u"Command2"_s);
        QCOMPARE(desk.programs.Launched(), Texts{"c:\\utils\\editpad.exe _template.txt"});
    }

    void PlacesOfWindowsAreRemembered()
    {
        MainWindowDesk desk;
        MainWindow& first = desk.Start();
        desk.ChooseEntry(u"menu_help"_s);
        Find<QWidget>(first, u"HelpWindow"_s).resize(700, 500);
        const QSize size = first.size() + QSize(60, 40);
        first.resize(size);
        first.close();
        desk.EndWindow();
        MainWindow& second = desk.Start();
        QCOMPARE(second.size(), size);
        desk.ChooseEntry(u"menu_help"_s);
        QCOMPARE(Find<QWidget>(second, u"HelpWindow"_s).size(), QSize(700, 500));
    }

    void TheFirstStartSuitsTheScreenAndTheTabIsRemembered()
    {
        // What is left of a window that had no pane.
        QSettings().setValue(u"places/MainWindow"_s, QWidget().saveGeometry());
        MainWindowDesk desk;
        MainWindow& first = desk.Start();
        const QSize room = first.screen()->availableSize();
        QCOMPARE(first.size(), QSize(900, 640).boundedTo(room - QSize(8, 40)));
        QCOMPARE(Find<QTabWidget>(first, u"WorkPane"_s).currentIndex(), 0);
        Find<QTabWidget>(first, u"WorkPane"_s).setCurrentIndex(2);
        Find<QTreeView>(first, u"Messages"_s).setColumnWidth(2, 123);
        first.close();
        desk.EndWindow();
        MainWindow& second = desk.Start();
        QCOMPARE(Find<QTabWidget>(second, u"WorkPane"_s).currentIndex(), 2);
        QCOMPARE(Find<QTreeView>(second, u"Messages"_s).columnWidth(2), 123);
    }
};

const WindowTestOf<EndingTest> ending_window("ending");

} // namespace kiv

#include "ending_window_test.moc"
