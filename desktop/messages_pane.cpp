#include "desktop/messages_pane.h"

#include "desktop/qt_text.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kiv {

namespace {

constexpr int kTextColumn = 0;
constexpr int kFileRole = Qt::UserRole;     // the file, a drive path
constexpr int kCopyRole = Qt::UserRole + 1; // the line that is copied
constexpr int kShownLines = 8;
constexpr int kWidestPlace = 3; // at most a third of the width: the message keeps the rest

QString OneLine(std::string_view text)
{
    return ToQt(text).simplified();
}

QTreeWidgetItem* MakeItem(const Warning& warning)
{
    const QString line = warning.where.line > 0 ? QString::number(warning.where.line) : QString();
    const std::string place = warning.where.Text();
    const std::string hint = warning.hint.empty() ? "" : " " + warning.hint;
    auto* const item = new QTreeWidgetItem(
        {OneLine(warning.text), ToQt(warning.where.file), line, ToQt(warning.where.page)});
    item->setData(kTextColumn, kFileRole, ToQt(warning.where.file));
    item->setData(
        kTextColumn, kCopyRole,
        OneLine((place.empty() ? warning.text : warning.text + " (" + place + ")") + hint));
    item->setToolTip(kTextColumn, ToTip(warning.text + hint));
    item->setToolTip(1, ToTip(place));
    item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

QToolButton* MakeToolButton(const QString& name, const QString& text, const QString& tip,
                            QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

} // namespace

MessagesPane::MessagesPane(QWidget* parent)
    : QWidget(parent), title_(new QLabel(this)), list_(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("MessagesPane"));
    list_->setObjectName(QStringLiteral("Messages"));
    list_->setAccessibleName(QStringLiteral("Messages"));
    list_->setAccessibleDescription(
        QStringLiteral("The warnings of the last command; Enter opens the file of one"));
    list_->setToolTip(QStringLiteral("Double-click a message to open its file in the editor"));
    list_->setHeaderLabels({QStringLiteral("Message"), QStringLiteral("File"),
                            QStringLiteral("Line"), QStringLiteral("Page")});
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->setMinimumHeight(fontMetrics().lineSpacing() * kShownLines);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(kTextColumn, QHeaderView::Stretch);
    title_->setBuddy(list_);

    auto* const copy =
        MakeToolButton(QStringLiteral("CopyMessages"), QStringLiteral("Copy"),
                       QStringLiteral("Copy the selected messages, or all of them"), this);
    auto* const close =
        MakeToolButton(QStringLiteral("CloseMessages"), QStringLiteral("Close"),
                       QStringLiteral("Close the messages until there are new ones"), this);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->addWidget(title_, 1);
    row->addWidget(copy);
    row->addWidget(close);
    column->addLayout(row);
    column->addWidget(list_, 1);

    auto* const copy_action = new QAction(QStringLiteral("Copy"), list_);
    copy_action->setShortcut(QKeySequence::Copy);
    copy_action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    list_->addAction(copy_action);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);

    connect(copy_action, &QAction::triggered, this, &MessagesPane::Copy);
    connect(copy, &QToolButton::clicked, this, &MessagesPane::Copy);
    connect(close, &QToolButton::clicked, this, [this] { SetOpen(false); });
    connect(list_, &QTreeWidget::itemActivated, this, &MessagesPane::OpenFileOf);
    hide();
}

void MessagesPane::ShowWarnings(const std::vector<Warning>& warnings)
{
    list_->clear();
    for (const Warning& warning : warnings)
        list_->addTopLevelItem(MakeItem(warning));
    for (int column = 1; column < list_->columnCount(); ++column) {
        list_->resizeColumnToContents(column);
        const int most = parentWidget()->width() / kWidestPlace;
        list_->setColumnWidth(column, std::min(list_->columnWidth(column), most));
    }
    title_->setText(QStringLiteral("&Messages: %1").arg(warnings.size()));
    SetOpen(!warnings.empty());
}

void MessagesPane::SetOpen(bool open)
{
    if (open == isVisibleTo(parentWidget()))
        return;
    if (open && on_shown)
        on_shown(open);
    setVisible(open);
    if (!open && on_shown)
        on_shown(open);
}

void MessagesPane::OpenFileOf(const QTreeWidgetItem* item)
{
    const std::string file = FromQt(item->data(kTextColumn, kFileRole).toString());
    if (!file.empty() && on_open)
        on_open(file);
}

void MessagesPane::Copy()
{
    QStringList lines;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* const item = list_->topLevelItem(row);
        if (item->isSelected() || list_->selectedItems().isEmpty())
            lines.push_back(item->data(kTextColumn, kCopyRole).toString());
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void MessagesPane::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        SetOpen(false);
    else
        QWidget::keyPressEvent(event);
}

} // namespace kiv
