#include "desktop/pairs_model.h"

#include "desktop/qt_text.h"

namespace kiv {

void PairsModel::Show(const RenameLook& look)
{
    beginResetModel();
    look_ = look;
    endResetModel();
}

int PairsModel::rowCount(const QModelIndex& parent) const
{
    const std::size_t rows = look_.pairs.size() + (look_.stops ? 1 : 0);
    return parent.isValid() ? 0 : static_cast<int>(rows);
}

int PairsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant PairsModel::data(const QModelIndex& index, int role) const
{
    const bool is_stop = IsStop(index.row());
    const RenamePair& pair =
        is_stop ? *look_.stops : look_.pairs[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(index.column() == 0 ? pair.from : pair.to);
    case Qt::DecorationRole:
        return is_stop && index.column() == 0 ? QVariant(stop_) : QVariant();
    case Qt::ToolTipRole:
        return ToTip(is_stop ? look_.warning : pair.from + "\r\n" + pair.to);
    case Qt::AccessibleDescriptionRole:
        return is_stop ? QStringLiteral("This one stops the run") : QString();
    default:
        return {};
    }
}

QVariant PairsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? QStringLiteral("Name now") : QStringLiteral("Name then");
}

} // namespace kiv
