// The window "KIV HELP".
#include "desktop/help_window.h"
#include "desktop/qt_text.h"
#include "shell/help_text.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"

#include <QFontInfo>
#include <QPlainTextEdit>
#include <QPushButton>

namespace kiv {

using namespace Qt::StringLiterals;

class HelpWindowTest : public QObject {
    Q_OBJECT

  private slots:
    void Controls()
    {
        SideWindowDesk desk;
        HelpWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(window.windowTitle(), u"KIV HELP"_s);
        const QStringList captions = {u"close"_s, u"at's"_s, u"bangs"_s, u"Top Matter"_s,
                                      u"Misc..."_s};
        for (qsizetype i = 0; i < captions.size(); ++i) {
            const QString name = u"Command"_s + QString::number(i + 1);
            QCOMPARE(Seen(Find<QPushButton>(window, name).text()), captions[i]);
        }
        QCOMPARE(Faults(window), QString());
        QVERIFY(!window.isModal());
    }

    void TabReachesEverything()
    {
        SideWindowDesk desk;
        HelpWindow window(desk, nullptr);
        window.BringUp();
        QCOMPARE(TabOrder(window, u"help_text"_s),
                 (QStringList{u"help_text"_s, u"Command2"_s, u"Command3"_s, u"Command4"_s,
                              u"Command5"_s, u"manual"_s, u"Command1"_s}));
    }

    void BoxHasTheFirstSectionInFixedWidthAndIsReadOnly()
    {
        SideWindowDesk desk;
        HelpWindow window(desk, nullptr);
        window.BringUp();
        const auto& box = Find<QPlainTextEdit>(window, u"help_text"_s);
        QCOMPARE(FieldText(box), show1());
        QVERIFY(box.isReadOnly());
        QVERIFY(QFontInfo(box.font()).fixedPitch());
    }

    void ButtonsShowTheirSections()
    {
        SideWindowDesk desk;
        HelpWindow window(desk, nullptr);
        window.BringUp();
        const auto& box = Find<QPlainTextEdit>(window, u"help_text"_s);
        const std::pair<QString, std::string> kSections[] = {{u"Command2"_s, show1()},
                                                             {u"Command3"_s, show2()},
                                                             {u"Command4"_s, show3()},
                                                             {u"Command5"_s, show4()}};
        for (const auto& [button, text] : kSections) {
            Press(window, button);
            QCOMPARE(FieldText(box), text);
            Press(window, button); // replaced, not added to
            QCOMPARE(FieldText(box), text);
        }
    }

    void ManualOpensBesideTheQuickReference()
    {
        SideWindowDesk desk;
        desk.Put("kiv/manual/index.htm");
        desk.workspace().ProgramFolder = "C:\\kiv\\bin";
        HelpWindow window(desk, nullptr);
        window.BringUp();
        Press(window, u"manual"_s);
        QCOMPARE(desk.programs.Launched(), Texts{"explorer C:\\kiv\\manual\\index.htm"});
        QVERIFY(window.isVisible());
    }

    void TextCanBeCopied()
    {
        SideWindowDesk desk;
        HelpWindow window(desk, nullptr);
        window.BringUp();
        Press(window, u"Command5"_s);
        auto& box = Find<QPlainTextEdit>(window, u"help_text"_s);
        box.selectAll();
        box.copy();
        QVERIFY(desk.clipboard.Text().find("++images/_pichtml.txt") != std::string::npos);
    }

    void CloseAndEscape()
    {
        SideWindowDesk desk;
        HelpWindow window(desk, nullptr);
        window.BringUp();
        Press(window, u"Command3"_s);
        Press(window, u"Command1"_s);
        QVERIFY(!window.isVisible());
        window.BringUp();
        QCOMPARE(FieldText(Find<QPlainTextEdit>(window, u"help_text"_s)), show1());
        QTest::keyClick(&Find<QPlainTextEdit>(window, u"help_text"_s), Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }
};

const WindowTestOf<HelpWindowTest> help_window("help");

} // namespace kiv

#include "help_window_test.moc"
