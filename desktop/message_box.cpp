#include "desktop/message_box.h"

#include "desktop/qt_text.h"

#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QShortcut>

namespace kiv {

void ShowBox(QWidget* parent, std::string_view text)
{
    QWidget* const active = QApplication::activeWindow();
    QMessageBox box(active != nullptr ? active : parent);
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setWindowTitle(QStringLiteral("kiv"));
    box.setTextFormat(Qt::PlainText); // the text may hold tags
    box.setText(ToQt(text));
    box.setStandardButtons(QMessageBox::Ok);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // The whole text when nothing of it is selected.
    const QShortcut copy(QKeySequence::Copy, &box);
    QObject::connect(&copy, &QShortcut::activated, &box,
                     [&box] { QGuiApplication::clipboard()->setText(box.text()); });
    box.exec();
}

std::string ErrorText(const RunError& error)
{
    return error.where.empty() ? error.text : error.text + "\r\n" + error.where;
}

} // namespace kiv
