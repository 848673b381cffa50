#include "desktop/pages_model.h"

#include "desktop/qt_text.h"
#include "text/windows1252.h"

#include <QApplication>
#include <QFont>
#include <QStyle>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

// The internal number of a page's index is that of its section, counted from 1; a section's is 0.
constexpr quintptr kSectionRow = 0;

quintptr PageRow(std::size_t section)
{
    return static_cast<quintptr>(section) + 1;
}

std::size_t SectionOf(const QModelIndex& page)
{
    return static_cast<std::size_t>(page.internalId() - 1);
}

QString FilterText(const SitePage& page)
{
    return QString::number(page.listed.number) + u' ' + ToQt(page.listed.file) + u' ' +
           ToQt(page.listed.title) + u' ' + ToQt(FateText(page));
}

QString CellText(const SitePage& page, int column)
{
    switch (column) {
    case PagesModel::kNumber:
        return QString::number(page.listed.number);
    case PagesModel::kFile:
        return ToQt(page.listed.file);
    case PagesModel::kTitle:
        return ToQt(page.listed.title);
    case PagesModel::kFate:
        return ToQt(FateText(page));
    default:
        return page.warnings == 0 ? QString() : QString::number(page.warnings);
    }
}

QVariant SortValue(const SitePage& page, int column)
{
    switch (column) {
    case PagesModel::kNumber:
        return page.listed.number;
    case PagesModel::kWarnings:
        return page.warnings;
    default:
        return CellText(page, column);
    }
}

QString TipOf(const SitePage& page)
{
    const std::string fate = FateText(page);
    return ToTip(page.listed.title + "\n" + page.listed.path + "\n" +
                 (fate.empty() ? "Not built since kiv was started" : fate));
}

QVariant ColumnAlignment(int column)
{
    const bool is_number = column == PagesModel::kNumber || column == PagesModel::kWarnings;
    return QVariant((is_number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

PagesModel::PagesModel(QObject* parent)
    : QAbstractItemModel(parent),
      warning_(QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning)),
      error_(QApplication::style()->standardIcon(QStyle::SP_MessageBoxCritical))
{
}

void PagesModel::Show(const SitePages& site)
{
    beginResetModel();
    site_ = site;
    filters_.clear();
    for (const SiteSection& section : site_.sections) {
        QStringList& texts = filters_.emplace_back();
        for (const SitePage& page : section.pages)
            texts << FilterText(page);
    }
    endResetModel();
}

bool PagesModel::IsSection(const QModelIndex& index) const
{
    return index.isValid() && index.internalId() == kSectionRow;
}

const SiteSection* PagesModel::SectionAt(const QModelIndex& index) const
{
    if (!index.isValid())
        return nullptr;
    return &site_.sections[IsSection(index) ? static_cast<std::size_t>(index.row())
                                            : SectionOf(index)];
}

const SitePage* PagesModel::PageAt(const QModelIndex& index) const
{
    if (!index.isValid() || IsSection(index))
        return nullptr;
    return &SectionAt(index)->pages[static_cast<std::size_t>(index.row())];
}

QModelIndex PagesModel::Find(const std::string& path) const
{
    const std::string wanted = UpperCase(path);
    for (std::size_t section = 0; section < site_.sections.size(); ++section) {
        const std::vector<SitePage>& pages = site_.sections[section].pages;
        for (std::size_t page = 0; page < pages.size(); ++page)
            if (UpperCase(pages[page].listed.path) == wanted)
                return createIndex(static_cast<int>(page), 0, PageRow(section));
    }
    return {};
}

QModelIndex PagesModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    if (parent.isValid())
        return createIndex(row, column, PageRow(static_cast<std::size_t>(parent.row())));
    return createIndex(row, column, site_.is_group ? kSectionRow : PageRow(0));
}

QModelIndex PagesModel::parent(const QModelIndex& child) const
{
    if (!site_.is_group || !child.isValid() || IsSection(child))
        return {};
    return createIndex(static_cast<int>(SectionOf(child)), 0, kSectionRow);
}

int PagesModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid() && site_.is_group)
        return static_cast<int>(site_.sections.size());
    if (parent.isValid() ? !IsSection(parent) || parent.column() > 0 : site_.sections.empty())
        return 0;
    const std::size_t section = parent.isValid() ? static_cast<std::size_t>(parent.row()) : 0;
    return static_cast<int>(site_.sections[section].pages.size());
}

int PagesModel::columnCount(const QModelIndex& /*parent*/) const
{
    return kColumns;
}

QVariant PagesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return ColumnAlignment(index.column());
    return IsSection(index) ? SectionData(*SectionAt(index), index, role) : PageData(index, role);
}

QVariant PagesModel::PageData(const QModelIndex& index, int role) const
{
    const SitePage& page = *PageAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return CellText(page, index.column());
    case Qt::DecorationRole:
        return PageIcon(page, index.column());
    case Qt::ToolTipRole:
        return TipOf(page);
    case kFilterRole:
        return filters_[SectionOf(index)][index.row()];
    case kSortRole:
        return SortValue(page, index.column());
    default:
        return {};
    }
}

QVariant PagesModel::PageIcon(const SitePage& page, int column) const
{
    if (column == kFate && page.fate == PageFate::unwritten)
        return error_;
    if (column == kWarnings && page.warnings > 0)
        return warning_;
    return {};
}

QVariant PagesModel::SectionData(const SiteSection& section, const QModelIndex& index,
                                 int role) const
{
    const bool is_name = index.column() == kFile;
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == kTitle)
            return ToQt(section.trouble);
        return is_name ? ToQt(section.name) : QString();
    case Qt::DecorationRole:
        return is_name && !section.trouble.empty() ? QVariant(warning_) : QVariant();
    case Qt::FontRole: {
        QFont font;
        font.setBold(true);
        return font;
    }
    case Qt::ToolTipRole:
        return ToTip(section.trouble.empty() ? section.folder : section.trouble);
    case kFilterRole:
        return ToQt(section.name);
    case kSortRole:
        return index.row();
    default:
        return {};
    }
}

QVariant PagesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return ColumnAlignment(section);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QString kNames[kColumns] = {u"No."_s, u"File"_s, u"Title"_s, u"Last build"_s,
                                             u"Warnings"_s};
    return kNames[section];
}

} // namespace kiv
