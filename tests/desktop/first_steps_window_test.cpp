// A start without a folder: the ways on that the main window offers.
#include "desktop/first_steps_pane.h"
#include "tests/desktop/main_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTreeView>

namespace kiv {

using namespace Qt::StringLiterals;

class FirstStepsTest : public QObject {
    Q_OBJECT

    static FirstStepsPane& Pane(const MainWindow& window)
    {
        return Find<FirstStepsPane>(window, u"FirstSteps"_s);
    }
    /// The user always picks this folder.
    static void Pick(const MainWindow& window, const std::optional<std::string>& folder)
    {
        Pane(window).pick_folder = [folder](const QString&) { return folder; };
    }
    static bool Shows(const MainWindow& window, const QString& button)
    {
        return Find<QPushButton>(window, button).isVisible();
    }

  private slots:
    void init() { QSettings().clear(); }

    void AWindowWithAFolderOffersNothing()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        QVERIFY(!Pane(window).isVisible());
    }

    void AStartWithoutAFolderOffersThreeWays()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start(std::nullopt);
        QVERIFY(Pane(window).isVisible());
        QVERIFY(Shows(window, u"BeginSite"_s));
        QVERIFY(Shows(window, u"OpenFolder"_s));
        QVERIFY(!Shows(window, u"OpenStartFolder"_s)); // it is no site's
        QVERIFY(!Shows(window, u"OpenExample"_s));     // it is not installed
        QVERIFY(!Shows(window, u"FirstEditor"_s));     // there is one
        QCOMPARE(Faults(Pane(window)), QString());
    }

    void ASiteIsBegunAndBuilt()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start(std::nullopt);
        QVERIFY(QTest::qWaitForWindowActive(desk.Window().windowHandle()));
        const int height = window.height();
        Pick(window, "C:\\my site");
        Press(window, u"BeginSite"_s);
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(desk.Exists("my site/_html.txt"));
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\my site\\"));
        QVERIFY(!Pane(window).isVisible());
        QCOMPARE(window.height(), height);
        QVERIFY(Find<QTreeView>(window, u"Pages"_s).isVisible());
        QVERIFY(Find<QPushButton>(window, u"Command1"_s).hasFocus());
        Press(window, u"Command1"_s);
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(desk.Exists("my site/index.htm"));
    }

    void TheMenuBeginsASiteAtAnyTime()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start();
        Pick(window, "C:\\another");
        desk.ChooseEntry(u"mnu_beginsite"_s);
        QVERIFY(desk.Exists("another/_html.txt"));
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\another\\"));
        QVERIFY(Find<QTreeView>(window, u"Pages"_s).model()->rowCount() > 0);
    }

    void WhoPicksNoFolderStays()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start(std::nullopt);
        Pick(window, std::nullopt);
        Press(window, u"BeginSite"_s);
        Press(window, u"OpenFolder"_s);
        QVERIFY(Pane(window).isVisible());
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("\\"));
    }

    void AFolderThatIsNotThereIsToldAndTheWaysStay()
    {
        MainWindowDesk desk;
        const MainWindow& window = desk.Start(std::nullopt);
        Pick(window, "C:\\gone");
        Press(window, u"OpenFolder"_s);
        QCOMPARE(desk.boxes.texts.size(), 1);
        QVERIFY(Pane(window).isVisible());
        Pick(window, "C:\\site");
        Press(window, u"OpenFolder"_s);
        QVERIFY(!Pane(window).isVisible());
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\site\\"));
    }

    void TheFolderOfTheStartIsOpenedAtOnce()
    {
        MainWindowDesk desk;
        desk.Put("here/_html.txt", "@FILE = a\r\n");
        desk.Put("here/_template.txt", "<!--BODY HERE-->\r\n");
        desk.files->ChangeDirectory("C:\\here");
        const MainWindow& window = desk.Start(std::nullopt);
        QVERIFY(Shows(window, u"OpenStartFolder"_s));
        QCOMPARE(Faults(Pane(window)), QString());
        Press(window, u"OpenStartFolder"_s);
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\here\\"));
        QVERIFY(!Pane(window).isVisible());
    }

    void TheExampleIsCopied()
    {
        MainWindowDesk desk;
        desk.Put("share/museum/site/_html.txt", "@FILE = a\r\n");
        desk.Put("share/museum/utils/quiz.txt", "script\r\n");
        const MainWindow& window = desk.Start(std::nullopt, "C:\\share\\museum");
        Pick(window, "C:\\mine");
        Press(window, u"OpenExample"_s);
        QCOMPARE(desk.boxes.texts, QStringList());
        QVERIFY(desk.Exists("mine/museum/site/_html.txt"));
        QCOMPARE(desk.Window().workspace().WorkDir, std::string("C:\\mine\\museum\\site\\"));
    }

    void AMissingEditorIsOfferedUntilThereIsOne()
    {
        MainWindowDesk desk;
        std::filesystem::remove(desk.Native("utils/kiv_editpad.txt"));
        bool takes = false; // the first offer is refused
        QTimer timer;
        connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* const offer = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (offer == nullptr || offer->objectName() != u"EditorOffer"_s)
                return;
            Find<QComboBox>(*offer, u"Editors"_s).setCurrentText(u"gedit +%l %f"_s);
            takes ? offer->accept() : offer->reject();
        });
        timer.start(0);
        const MainWindow& window = desk.Start(std::nullopt);
        QVERIFY(Shows(window, u"FirstEditor"_s));
        takes = true;
        Press(window, u"FirstEditor"_s);
        QCOMPARE(desk.Content("utils/kiv_editpad.txt"), std::string("gedit +%l %f\r\n"));
        QVERIFY(!Shows(window, u"FirstEditor"_s));
        QVERIFY(Pane(window).isVisible());
    }
};

const WindowTestOf<FirstStepsTest> first_steps_window("first_steps");

} // namespace kiv

#include "first_steps_window_test.moc"
