#include "desktop/messages_model.h"

#include "desktop/qt_text.h"
#include "shell/messages.h"
#include "text/joined_text.h"

#include <QApplication>
#include <QStyle>

#include <utility>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kDigits = 6; // of a line, so that places sort by their numbers

QString OneLine(std::string_view text)
{
    return ToQt(text).simplified();
}

QIcon Icon(QStyle::StandardPixmap pixmap)
{
    return QApplication::style()->standardIcon(pixmap);
}

QString TipOf(const Finding& message)
{
    return ToTip(message.suggestion.empty() ? message.text
                                            : message.text + "\r\n" + message.suggestion);
}

} // namespace

QString SentenceOf(const Finding& message)
{
    const std::string place = message.where.Text();
    return OneLine(Joined({SeverityName(message.severity), ": ", message.text,
                           place.empty() ? "" : " (", place, place.empty() ? "" : ")",
                           message.suggestion.empty() ? "" : " ", message.suggestion}));
}

MessagesModel::MessagesModel(QObject* parent)
    : QAbstractTableModel(parent), icons_{Icon(QStyle::SP_MessageBoxInformation),
                                          Icon(QStyle::SP_MessageBoxWarning),
                                          Icon(QStyle::SP_MessageBoxCritical)}
{
}

void MessagesModel::Show(std::vector<Finding> messages, std::string folder)
{
    beginResetModel();
    messages_ = std::move(messages);
    folder_ = std::move(folder);
    endResetModel();
}

int MessagesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(messages_.size());
}

int MessagesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QString MessagesModel::CellText(const Finding& message, int column) const
{
    switch (column) {
    case kSeverity:
        return ToQt(SeverityName(message.severity));
    case kText:
        return OneLine(message.text);
    case kPlace:
        return ToQt(ShownPlace(message.where, folder_));
    default:
        return ToQt(message.where.page);
    }
}

QVariant MessagesModel::SortValue(const Finding& message, int column) const
{
    if (column == kSeverity)
        return static_cast<int>(message.severity);
    if (column == kPlace)
        return ToQt(message.where.file) +
               u"\t%1"_s.arg(message.where.line, kDigits, 10, QLatin1Char('0'));
    return CellText(message, column);
}

QVariant MessagesModel::data(const QModelIndex& index, int role) const
{
    const Finding& message = messages_[static_cast<std::size_t>(index.row())];
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return CellText(message, column);
    case Qt::DecorationRole:
        return column == kSeverity ? QVariant(icons_.at(static_cast<std::size_t>(message.severity)))
                                   : QVariant();
    case Qt::ToolTipRole:
        return column == kPlace ? ToTip(message.where.Text()) : TipOf(message);
    case Qt::AccessibleTextRole:
        return column == kText ? SentenceOf(message) : CellText(message, column);
    case kFilterRole:
        return SentenceOf(message);
    case kSortRole:
        return SortValue(message, column);
    default:
        return {};
    }
}

QVariant MessagesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QString kNames[kColumns] = {u"Kind"_s, u"Message"_s, u"Place"_s, u"Page"_s};
    return kNames[section];
}

} // namespace kiv
