// Whatever the windows beside the main window show, the manual tells.
#include "desktop/conversion_window.h"
#include "desktop/dimension_window.h"
#include "desktop/directory_window.h"
#include "desktop/first_steps_pane.h"
#include "desktop/help_window.h"
#include "desktop/messages_pane.h"
#include "desktop/news_window.h"
#include "desktop/pages_pane.h"
#include "desktop/qt_text.h"
#include "desktop/rename_window.h"
#include "desktop/story_pane.h"
#include "desktop/task_window.h"
#include "shell/commands.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test.h"
#include "tests/manual/manual_text.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>

namespace kiv {

class ManualWindowTest : public QObject {
    Q_OBJECT

    /// What stands on the buttons, boxes and fields of a window.
    static Texts Captions(const QWidget& window)
    {
        QStringList shown;
        for (const QAbstractButton* const button : window.findChildren<QPushButton*>())
            shown << button->text();
        for (const QAbstractButton* const button : window.findChildren<QToolButton*>())
            if (!button->text().isEmpty()) // a part of a field
                shown << button->text();
        for (const QAbstractButton* const box : window.findChildren<QCheckBox*>())
            shown << box->text();
        for (const QComboBox* const box : window.findChildren<QComboBox*>())
            for (int row = 0; row < box->count(); ++row)
                shown << box->itemText(row);
        for (const QLabel* const label : window.findChildren<QLabel*>())
            if (label->buddy() != nullptr)
                shown << label->text();
        Texts captions;
        for (const QString& text : shown)
            captions.push_back(FromQt(Seen(text)));
        return captions;
    }

    template <typename Window>
    static void Told(std::size_t least)
    {
        SideWindowDesk desk;
        AllTold(Window(desk, nullptr), least);
    }

    static void AllTold(const QWidget& window, std::size_t least)
    {
        const Texts captions = Captions(window);
        QVERIFY2(captions.size() >= least, qPrintable(QString::number(captions.size())));
        for (const std::string& missing : test::Unmentioned(captions, test::CodeSpans()))
            QFAIL(qPrintable(QStringLiteral("The manual does not tell of: ") + ToQt(missing)));
    }

  private slots:
    void ConversionWindowIsTold() { Told<ConversionDialog>(8); }
    void DimensionWindowIsTold() { Told<DimensionWindow>(7); }
    void DirectoryWindowIsTold() { Told<DirectoryWindow>(6); }
    void FirstStepsPaneIsTold()
    {
        SideWindowDesk desk;
        AllTold(FirstStepsPane(desk, {}, nullptr), 5);
    }
    void HelpWindowIsTold() { Told<HelpWindow>(5); }
    void NewsWindowIsTold() { Told<NewsWindow>(15); }
    void RenameWindowIsTold() { Told<RenameWindow>(3); }
    void TaskWindowsAreTold()
    {
        int windows = 0;
        for (const Command& command : Commands())
            if (command.opens == Opens::task) {
                SideWindowDesk desk;
                AllTold(TaskWindow(desk, nullptr, command), 2);
                ++windows;
            }
        QCOMPARE(windows, 5);
    }
    void StoryPaneIsTold() { Told<StoryPane>(3); }
    void MessagesPaneIsTold() { AllTold(MessagesPane(nullptr), 2); }
    void PagesPaneIsTold()
    {
        SideWindowDesk desk;
        const PagesPane pane(desk, nullptr);
        AllTold(pane, 1);
        Texts entries;
        for (const QAction* const action : Find<QTreeView>(pane, QStringLiteral("Pages")).actions())
            entries.push_back(FromQt(action->text().section(QLatin1Char('\t'), 0, 0)));
        QCOMPARE(entries.size(), std::size_t{5});
        for (const std::string& missing : test::Unmentioned(entries, test::CodeSpans()))
            QFAIL(qPrintable(QStringLiteral("The manual does not tell of: ") + ToQt(missing)));
    }
};

const WindowTestOf<ManualWindowTest> manual_window("manual");

} // namespace kiv

#include "manual_window_test.moc"
