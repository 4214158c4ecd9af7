#pragma once

#include <QItemSelectionModel>

namespace scheduleview {

/// A selection that signals when a layout change removed rows from it. The base class drops such rows silently, and
/// keeps a selection of all rows even if the layout change replaced them.
class ListSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    ListSelectionModel(QAbstractItemModel *model, QObject *parent);

private:
    [[nodiscard]] int rowCount() const;
    void countRows();
    void reportLostRows();

    int m_rowCountBefore = 0; ///< the selected rows before the layout change
};

} // namespace scheduleview
