#pragma once

#include <QItemSelectionModel>

namespace scheduleview {

/// A selection that signals when a layout change removed rows from it. The base class drops them silently, and
/// extends a selection of all rows to the rows that the layout change adds.
class ListSelectionModel final : public QItemSelectionModel
{
    Q_OBJECT

public:
    ListSelectionModel(QAbstractItemModel *model, QObject *parent);

private:
    [[nodiscard]] int rowCount() const;
    void countRows();
    void reportLostRows();

    int m_rowCountBefore = 0; ///< selected rows before the layout change
};

} // namespace scheduleview
