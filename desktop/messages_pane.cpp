#include "desktop/messages_pane.h"

#include "desktop/controls.h"
#include "desktop/filter_bar.h"
#include "desktop/messages_model.h"
#include "desktop/qt_text.h"

#include <QAction>
#include <QClipboard>
#include <QDataStream>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kShownMessages = 3;
constexpr int kWidestPlace = 32; // characters

constexpr ControlWords kMessagesFilter = {"FilterMessages", "Filter",
                                          "Show only the messages that hold this text (Ctrl+F)"};
constexpr ControlWords kMessagesList = {
    "Messages", "Messages",
    "What builds, checks and other commands had to tell; a double "
    "click or Enter opens the line of a message in the editor"};
constexpr ControlWords kCopy = {"CopyMessages", "Copy",
                                "Copy the selected messages, or all of them (Ctrl+C)"};

} // namespace

MessagesPane::MessagesPane(QWidget* parent)
    : QWidget(parent), model_(new MessagesModel(this)), found_(new QSortFilterProxyModel(this)),
      filter_(new FilterBar(kMessagesFilter, this)), list_(new QTreeView(this)),
      detail_(new QPlainTextEdit(this)), halves_(new QSplitter(Qt::Vertical, this))
{
    setObjectName(u"MessagesPane"_s);
    MakeList();
    MakeDetail();
    auto* const copy = new QToolButton(this);
    copy->setText(AsShown(kCopy.caption));
    Describe(*copy, kCopy);
    copy->setFocusPolicy(Qt::StrongFocus);
    connect(copy, &QToolButton::clicked, this, &MessagesPane::Copy);
    filter_->Add(copy);
    halves_->setChildrenCollapsible(false);
    halves_->addWidget(list_);
    halves_->addWidget(detail_);
    halves_->setSizes({3 * detail_->sizeHint().height(), detail_->sizeHint().height()});
    connect(halves_, &QSplitter::splitterMoved, this, [this] { is_arranged_ = true; });
    auto* const column = new QVBoxLayout(this);
    column->addWidget(filter_);
    column->addWidget(halves_, 1);
    Connect();
    setFocusProxy(filter_);
    ShowCount();
}

void MessagesPane::MakeList()
{
    found_->setSourceModel(model_);
    found_->setFilterRole(MessagesModel::kFilterRole);
    found_->setSortRole(MessagesModel::kSortRole);
    found_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    found_->setSortCaseSensitivity(Qt::CaseInsensitive);
    Describe(*list_, kMessagesList);
    list_->setAccessibleName(ToQt(kMessagesList.caption));
    list_->setModel(found_);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setAllColumnsShowFocus(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setMinimumHeight(fontMetrics().lineSpacing() * kShownMessages);
    list_->header()->setSortIndicatorClearable(true);
    list_->header()->setSortIndicator(-1, Qt::AscendingOrder);
    list_->setSortingEnabled(true);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(MessagesModel::kText, QHeaderView::Stretch);
}

void MessagesPane::MakeDetail()
{
    Describe(*detail_, {"MessageDetail", "", "The message that is chosen, in full"});
    detail_->setToolTip({}); // it would cover the text
    detail_->setAccessibleName(u"Message"_s);
    detail_->setReadOnly(true);
    detail_->setTabChangesFocus(true);
    detail_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    detail_->setPlaceholderText(u"Choose a message to read it in full."_s);
    detail_->setMinimumHeight(fontMetrics().lineSpacing() * 2);
}

void MessagesPane::Connect()
{
    filter_->on_text = [this](const QString& text) {
        found_->setFilterFixedString(text);
        ShowCount();
    };
    filter_->on_leave = [this] {
        if (!list_->currentIndex().isValid())
            list_->setCurrentIndex(found_->index(0, 0));
        list_->setFocus();
    };
    auto* const copy = new QAction(u"Copy"_s, list_);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    list_->addAction(copy);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(copy, &QAction::triggered, this, &MessagesPane::Copy);
    connect(list_->header(), &QHeaderView::sectionResized, this, [this](int column) {
        is_arranged_ =
            is_arranged_ || (!is_fitting_ && column != MessagesModel::kText && isVisible());
    });
    connect(list_, &QTreeView::activated, this, &MessagesPane::OpenFileOf);
    connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &MessagesPane::ShowDetail);
}

void MessagesPane::ShowMessages(std::vector<Finding> messages, const std::string& folder)
{
    model_->Show(std::move(messages), folder);
    FitColumns();
    ShowCount();
    ShowDetail();
}

void MessagesPane::FitColumns()
{
    if (is_arranged_)
        return;
    const QScopedValueRollback fitting(is_fitting_, true);
    for (const int column :
         {MessagesModel::kSeverity, MessagesModel::kPlace, MessagesModel::kPage}) {
        list_->resizeColumnToContents(column);
        list_->setColumnWidth(column, std::min(list_->columnWidth(column),
                                               fontMetrics().averageCharWidth() * kWidestPlace));
    }
}

QByteArray MessagesPane::State() const
{
    QByteArray state;
    if (is_arranged_) {
        QDataStream stream(&state, QIODevice::WriteOnly);
        stream << list_->header()->saveState() << halves_->saveState();
    }
    return state;
}

void MessagesPane::Restore(const QByteArray& state)
{
    QByteArray columns;
    QByteArray halves;
    QDataStream stream(state);
    stream >> columns >> halves;
    is_arranged_ = list_->header()->restoreState(columns) && halves_->restoreState(halves);
}

void MessagesPane::ShowCount()
{
    filter_->ShowCount(u"Messages"_s, found_->rowCount(), model_->rowCount());
}

const Finding* MessagesPane::At(const QModelIndex& shown) const
{
    const QModelIndex index = found_->mapToSource(shown);
    return index.isValid() ? &model_->Messages()[static_cast<std::size_t>(index.row())] : nullptr;
}

void MessagesPane::ShowDetail()
{
    const Finding* const message = At(list_->currentIndex());
    std::string text;
    if (message != nullptr) {
        text = message->text;
        for (const std::string& more : {message->suggestion, message->where.Text()})
            text += more.empty() ? "" : "\r\n" + more;
    }
    SetFieldText(*detail_, text);
}

void MessagesPane::OpenFileOf(const QModelIndex& shown)
{
    const Finding* const message = At(shown);
    if (message == nullptr || message->where.file.empty() || !on_open)
        return;
    const KeptPlace where = message->where;
    on_open(where.file, where.line);
}

void MessagesPane::Copy()
{
    QStringList lines;
    const bool is_all = !list_->selectionModel()->hasSelection();
    for (int row = 0; row < found_->rowCount(); ++row) {
        const QModelIndex index = found_->index(row, 0);
        if (is_all || list_->selectionModel()->isRowSelected(row))
            lines.push_back(SentenceOf(*At(index)));
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

} // namespace kiv
