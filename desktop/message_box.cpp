#include "desktop/message_box.h"

#include "desktop/qt_text.h"

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QShortcut>

namespace kiv {

namespace {

// What is longer would push the button off the screen.
constexpr qsizetype kLongText = 1500;
constexpr qsizetype kManyLines = 25;
constexpr int kScrolledColumns = 80;
constexpr int kScrolledRows = 20;

bool IsLong(const QString& text)
{
    return text.size() > kLongText || text.count(u'\n') > kManyLines;
}

/// Puts the text of a box into an area that scrolls.
void LetTextScroll(QMessageBox& box)
{
    auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    auto* const grid = qobject_cast<QGridLayout*>(box.layout());
    if (label == nullptr || grid == nullptr)
        return;
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
    grid->removeWidget(label);
    auto* const area = new QScrollArea(&box);
    label->setWordWrap(true);
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setMinimumSize(box.fontMetrics().averageCharWidth() * kScrolledColumns,
                         box.fontMetrics().lineSpacing() * kScrolledRows);
    grid->addWidget(area, row, column, rows, columns);
}

/// A box without an icon has no room for one.
void DropRoomForIcon(const QMessageBox& box)
{
    QLayout& layout = *box.layout();
    for (int i = 0; i < layout.count(); ++i)
        if (QSpacerItem* const spacer = layout.itemAt(i)->spacerItem())
            spacer->changeSize(0, 0);
    layout.invalidate();
}

void ShowBoxOf(QWidget* parent, const QString& title, QMessageBox::Icon icon, const QString& text,
               const QString& about = {})
{
    QWidget* const active = QApplication::activeWindow();
    QMessageBox box(active != nullptr ? active : parent);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setWindowTitle(title);
    box.setIcon(icon);
    box.setTextFormat(Qt::PlainText); // the text may hold tags
    box.setText(text);
    box.setInformativeText(about);
    if (auto* const below = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel")))
        below->setTextFormat(Qt::PlainText); // so may a name of a file
    box.setStandardButtons(QMessageBox::Ok);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (IsLong(text))
        LetTextScroll(box);
    if (icon == QMessageBox::NoIcon)
        DropRoomForIcon(box);
    // The whole text when nothing of it is selected.
    const QShortcut copy(QKeySequence::Copy, &box);
    QObject::connect(&copy, &QShortcut::activated, &box,
                     [&box] { QGuiApplication::clipboard()->setText(box.text()); });
    box.exec();
}

/// A command of the main window `parent` has a caption, one of a window beside it that window's
/// title.
QString FailureTitle(QString work, const QWidget* parent)
{
    const QWidget* const active = QApplication::activeWindow();
    if (work.isEmpty() && active != nullptr && active != parent)
        work = active->windowTitle();
    return work.isEmpty() ? QStringLiteral("kiv: the command has failed")
                          : QStringLiteral("kiv: \"%1\" has failed").arg(work);
}

} // namespace

void ShowBox(QWidget* parent, std::string_view text, std::string_view about)
{
    ShowBoxOf(parent, QStringLiteral("kiv"), QMessageBox::NoIcon, ToQt(text), ToQt(about));
}

void ShowErrorBox(QWidget* parent, const QString& work, const RunError& error)
{
    ShowBoxOf(parent, FailureTitle(work, parent), QMessageBox::Critical, ToQt(ErrorText(error)));
}

std::string ErrorText(const RunError& error)
{
    std::string text = error.text;
    for (const std::string& more : {error.where.Text(), error.hint})
        if (!more.empty())
            text.append("\r\n").append(more);
    return text;
}

} // namespace kiv
