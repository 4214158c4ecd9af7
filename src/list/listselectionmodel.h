#pragma once

#include <QItemSelectionModel>

namespace scheduleview {

/// A selection that tells when a new layout has taken rows out of it. The base drops them silently, and would hold on
/// to "everything" while everything has become something else.
class ListSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    ListSelectionModel(QAbstractItemModel *model, QObject *parent);

private:
    [[nodiscard]] int rowCount() const;
    void rememberRows();
    void tellLostRows();

    int m_rows = 0;
};

} // namespace scheduleview
