#include "desktop/lines_model.h"

#include "desktop/qt_text.h"
#include "shell/story_parts.h"
#include "text/text.h"

#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kMostInACell = 1000; // past any width

QVariant AlignmentOf(int column)
{
    const Qt::Alignment side = column == LinesModel::kNumber ? Qt::AlignRight : Qt::AlignLeft;
    return QVariant(side | Qt::AlignVCenter);
}

} // namespace

void LinesModel::Show(PageStories page)
{
    beginResetModel();
    page_ = std::move(page);
    endResetModel();
}

int LinesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(page_.lines.size());
}

int LinesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumns;
}

QString LinesModel::CellText(const PageLine& line, int column) const
{
    const std::vector<ToldPlace>& sources = page_.stories[line.story].sources;
    switch (column) {
    case kNumber:
        return line.number == 0 ? QString() : QString::number(line.number);
    case kSource:
        return sources.empty() ? QString() : ToQt(PlaceWords(sources.front(), page_.folder));
    default:
        return ToQt(FirstChars(line.text, kMostInACell));
    }
}

QVariant LinesModel::data(const QModelIndex& index, int role) const
{
    const PageLine& line = page_.lines[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return CellText(line, index.column());
    case Qt::TextAlignmentRole:
        return AlignmentOf(index.column());
    case kWholeTextRole:
        return ToQt(line.text);
    default:
        return {};
    }
}

QVariant LinesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return AlignmentOf(section);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QString kNames[kColumns] = {QStringLiteral("Line"), QStringLiteral("Source"),
                                             QStringLiteral("Text")};
    return kNames[section];
}

} // namespace kiv
