// Whatever the windows beside the main window show, the manual tells.
#include "desktop/conversion_window.h"
#include "desktop/dimension_window.h"
#include "desktop/directory_window.h"
#include "desktop/help_window.h"
#include "desktop/news_window.h"
#include "desktop/qt_text.h"
#include "desktop/rename_window.h"
#include "desktop/story_window.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/desktop/window_test_main.h"
#include "tests/manual/manual_text.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

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
        const Window window(desk, nullptr);
        const Texts captions = Captions(window);
        QVERIFY2(captions.size() >= least, qPrintable(QString::number(captions.size())));
        for (const std::string& missing : test::Unmentioned(captions, test::CodeSpans()))
            QFAIL(qPrintable(QStringLiteral("The manual does not tell of: ") + ToQt(missing)));
    }

  private slots:
    void ConversionWindowIsTold() { Told<ConversionDialog>(8); }
    void DimensionWindowIsTold() { Told<DimensionWindow>(7); }
    void DirectoryWindowIsTold() { Told<DirectoryWindow>(6); }
    void HelpWindowIsTold() { Told<HelpWindow>(5); }
    void NewsWindowIsTold() { Told<NewsWindow>(15); }
    void RenameWindowIsTold() { Told<RenameWindow>(3); }
    void StoryWindowIsTold() { Told<StoryWindow>(3); }
};

} // namespace kiv

int main(int count, char** arguments)
{
    return kiv::RunWindowTest<kiv::ManualWindowTest>(count, arguments);
}

#include "manual_window_test.moc"
