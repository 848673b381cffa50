// Warnings, errors and findings as a table, in the order in which they came.
#pragma once

#include "inspect/finding.h"

#include <QAbstractTableModel>
#include <QIcon>

#include <array>
#include <string>
#include <vector>

namespace kiv {

class MessagesModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { kSeverity, kText, kPlace, kPage, kColumns };
    /// What a filter looks at, all columns in one; and what rows are sorted by.
    static constexpr int kFilterRole = Qt::UserRole;
    static constexpr int kSortRole = Qt::UserRole + 1;

    explicit MessagesModel(QObject* parent);

    /// `folder`: what places are shown relative to, a drive path that ends in "\".
    void Show(std::vector<Finding> messages, std::string folder);
    const std::vector<Finding>& Messages() const { return messages_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString CellText(const Finding& message, int column) const;
    QVariant SortValue(const Finding& message, int column) const;

    std::vector<Finding> messages_;
    std::string folder_;
    const std::array<QIcon, 3> icons_; // by severity
};

/// A message as it is copied and spoken: "warning: TEXT (PLACE)", then what to do.
QString SentenceOf(const Finding& message);

} // namespace kiv
