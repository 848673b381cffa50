#include "tests/desktop/main_window_desk.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>

namespace kiv {

using namespace Qt::StringLiterals;

BoxReader::BoxReader()
{
    connect(&timer_, &QTimer::timeout, this, &BoxReader::Look);
    timer_.start(0);
}

void BoxReader::Look()
{
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible())
        return;
    texts.push_back(box->text());
    if (on_box)
        on_box(*box);
    box->button(QMessageBox::Ok)->click();
}

MainWindowDesk::MainWindowDesk()
{
    Put("utils/kiv_editpad.txt", "pad\r\n");
    files->ChangeDirectory("C:\\");
}

MainWindow& MainWindowDesk::Start(const std::optional<std::string>& argument,
                                  const std::string& example)
{
    window_ = std::make_unique<MainWindow>(Surroundings{*files, clock, *starter, pictures_});
    window_->workspace().ExampleFolder = example;
    window_->show();
    window_->Start(argument);
    return *window_;
}

QString MainWindowDesk::Status() const
{
    return Find<QLabel>(*window_, u"Label2"_s).text();
}

QString MainWindowDesk::Pass() const
{
    return Find<QLabel>(*window_, u"PassStatus"_s).text();
}

void MainWindowDesk::ChooseEntry(const QString& name) const
{
    auto* const action = window_->findChild<QAction*>(name);
    if (action == nullptr)
        qFatal("no entry %s", qPrintable(name));
    action->trigger();
}

} // namespace kiv

#include "moc_main_window_desk.cpp"
