// The lines of a page, each with its source, as a table.
#pragma once

#include "shell/page_stories.h"

#include <QAbstractTableModel>

namespace kiv {

class LinesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kNumber, kSource, kText, kColumns };
    /// The whole text of a line; a cell shows only its beginning.
    static constexpr int kWholeTextRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void Show(PageStories page);
    /// The rows are its lines.
    const PageStories& Page() const { return page_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString CellText(const PageLine& line, int column) const;

    PageStories page_;
};

} // namespace kiv
