#include "desktop/path_field.h"

#include "desktop/qt_text.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QStringListModel>

#include <memory>

namespace kiv {

PathField::PathField(const ControlWords& words, QWidget* parent)
    : QLineEdit(parent), completions_(new QStringListModel(this))
{
    Describe(*this, words);
    setAcceptDrops(false);
    auto* const completer = new QCompleter(completions_, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    setCompleter(completer);
    connect(this, &QLineEdit::textEdited, this, &PathField::Complete);
}

void PathField::ShowPath(std::string_view shown, std::string_view whole, std::string_view native)
{
    const bool stays = !IsUntouched() && whole_ == ToQt(whole); // while it is being typed
    shown_ = ToQt(shown);
    whole_ = ToQt(whole);
    native_ = ToQtNative(native);
    if (!stays)
        hasFocus() ? ShowWhole() : ShowAtRest();
}

bool PathField::IsUntouched() const
{
    return text() == whole_ || text() == shown_;
}

void PathField::ShowAtRest()
{
    setText(shown_);
    setCursorPosition(0);
}

void PathField::ShowWhole()
{
    setText(whole_);
    selectAll();
}

void PathField::Complete(const QString& typed)
{
    QStringList whole;
    for (const std::string& path : complete(FromQtNative(typed)))
        whole << ToQtNative(path);
    completions_->setStringList(whole);
    completer()->complete();
}

void PathField::focusInEvent(QFocusEvent* event)
{
    if (event->reason() != Qt::PopupFocusReason && IsUntouched())
        ShowWhole();
    QLineEdit::focusInEvent(event);
}

void PathField::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    // Who fetches a path from another program wants to go on here.
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
        ShowAtRest();
}

void PathField::keyPressEvent(QKeyEvent* event)
{
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool is_completing = completer()->popup()->isVisible();
    if (is_enter) {
        completer()->popup()->hide();
        on_go(FromQtNative(text()));
        event->accept(); // else it would be the window's button's as well
    } else if (event->key() == Qt::Key_Escape && (is_completing || !IsUntouched())) {
        is_completing ? completer()->popup()->hide() : ShowWhole();
        event->accept();
    } else if (event->matches(QKeySequence::Copy) && IsWholeSelected()) {
        CopyNative();
        event->accept();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

bool PathField::IsWholeSelected() const
{
    return IsUntouched() && (!hasSelectedText() || selectedText() == text());
}

void PathField::CopyNative()
{
    QGuiApplication::clipboard()->setText(native_);
}

void PathField::contextMenuEvent(QContextMenuEvent* event)
{
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    for (QAction* const action : menu->actions()) {
        if (!action->text().startsWith(QLineEdit::tr("&Copy")) || !IsWholeSelected())
            continue;
        action->disconnect();
        action->setEnabled(true);
        connect(action, &QAction::triggered, this, &PathField::CopyNative);
    }
    menu->exec(event->globalPos());
}

} // namespace kiv
