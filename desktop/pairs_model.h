// The renames of a look as a model of two columns.
#pragma once

#include "shell/rename_looks.h"

#include <QAbstractTableModel>
#include <QIcon>

namespace kiv {

class PairsModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    PairsModel(const QIcon& stop, QObject* parent) : QAbstractTableModel(parent), stop_(stop) {}
    void Show(const RenameLook& look);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    bool IsStop(int row) const { return row >= static_cast<int>(look_.pairs.size()); }

    QIcon stop_;
    RenameLook look_;
};

} // namespace kiv
