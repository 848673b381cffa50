#include "desktop/rename_pairs.h"

#include "desktop/controls.h"
#include "desktop/pairs_model.h"
#include "desktop/qt_text.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QTreeView>
#include <QVBoxLayout>

namespace kiv {

namespace {

QLabel* MakeText(const QString& name, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

RenamePairs::RenamePairs(QWidget* parent)
    : QWidget(parent),
      model_(new PairsModel(style()->standardIcon(QStyle::SP_MessageBoxWarning), this)),
      list_(new QTreeView(this)), summary_(MakeText(QStringLiteral("summary"), this)),
      warning_(MakeText(QStringLiteral("warning"), this))
{
    Describe(*list_, {"pairs", "", "What is renamed, each file with its name now and then"});
    list_->setAccessibleName(QStringLiteral("Renames"));
    list_->setModel(model_);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setTabKeyNavigation(false);
    list_->header()->setSectionResizeMode(QHeaderView::Stretch);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(list_, 1);
    column->addWidget(summary_);
    column->addWidget(warning_);
}

void RenamePairs::Show(const RenameLook& look)
{
    model_->Show(look);
    summary_->setText(ToQt(look.summary));
    warning_->setText(ToQt(look.warning));
    warning_->setVisible(!look.warning.empty());
}

bool RenamePairs::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate && on_return)
        on_return();
    return QWidget::event(event);
}

} // namespace kiv
