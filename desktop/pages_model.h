// The pages of a site as a tree: in a group the folders with their pages, else the pages alone.
#pragma once

#include "shell/site_pages.h"

#include <QAbstractItemModel>
#include <QIcon>
#include <QStringList>

#include <vector>

namespace kiv {

class PagesModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum Column { kNumber, kFile, kTitle, kFate, kWarnings, kColumns };
    /// What a filter looks at, all columns in one; and what rows are sorted by.
    static constexpr int kFilterRole = Qt::UserRole;
    static constexpr int kSortRole = Qt::UserRole + 1;

    explicit PagesModel(QObject* parent);

    void Show(const SitePages& site);

    /// The page of a row; null for a folder and for no row.
    const SitePage* PageAt(const QModelIndex& index) const;
    /// The folder of a row, or that its page belongs to; null for no row.
    const SiteSection* SectionAt(const QModelIndex& index) const;
    /// The row of the page at a drive path; none when there is no such page.
    QModelIndex Find(const std::string& path) const;
    std::size_t Count() const { return site_.Count(); }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    bool IsSection(const QModelIndex& index) const;
    QVariant PageData(const QModelIndex& index, int role) const;
    QVariant SectionData(const SiteSection& section, const QModelIndex& index, int role) const;
    QVariant PageIcon(const SitePage& page, int column) const;

    SitePages site_;
    std::vector<QStringList> filters_; // by section and page
    const QIcon warning_;
    const QIcon error_;
};

} // namespace kiv
