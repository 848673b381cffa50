#include "desktop/filter_bar.h"

#include "desktop/controls.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace kiv {

FilterBar::FilterBar(const ControlWords& words, QWidget* parent)
    : QWidget(parent), row_(new QHBoxLayout(this)), field_(new QLineEdit(this)),
      count_(new QLabel(this))
{
    Describe(*field_, words);
    field_->setClearButtonEnabled(true);
    count_->setObjectName(QStringLiteral("count"));
    row_->setContentsMargins(0, 0, 0, 0);
    row_->addWidget(MakeLabel(words.caption, *field_));
    row_->addWidget(field_, 1);
    row_->addWidget(count_);
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) { on_text(text); });
    connect(field_, &QLineEdit::returnPressed, this, [this] { on_leave(); });
    setFocusProxy(field_);
}

void FilterBar::Add(QWidget* control)
{
    row_->addWidget(control);
}

void FilterBar::ShowCount(const QString& noun, int shown, int all)
{
    count_->setText(shown == all ? QStringLiteral("%1: %2").arg(noun).arg(all)
                                 : QStringLiteral("%1: %2 of %3").arg(noun).arg(shown).arg(all));
}

void FilterBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Down)
        on_leave();
    else if (event->key() == Qt::Key_Escape && !field_->text().isEmpty())
        field_->clear();
    else
        QWidget::keyPressEvent(event);
}

} // namespace kiv
