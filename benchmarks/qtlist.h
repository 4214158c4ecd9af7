#pragma once

#include "repainter.h"

#include <QStandardItemModel>
#include <QTableView>

#include <memory>

namespace bench {

/// The size of the windows with a list.
constexpr QSize ListWindowSize(1280, 720);

/// The schedule list made of Qt's own models.
class QtList
{
public:
    /// \a filled must outlive the list.
    explicit QtList(QAbstractItemModel *filled);
    ~QtList();
    Q_DISABLE_COPY(QtList)

    void open();
    void showPersonal();
    void filter(const QString &text);
    [[nodiscard]] int rowCount() const;

private:
    class Proxy;

    void hide(const QList<int> &columns);
    void paint();

    QAbstractItemModel *m_filled = nullptr;
    std::unique_ptr<Proxy> m_proxy;
    QTableView m_table;
    Repainter m_repainter;
};

/// All cells of the list in a standard model.
[[nodiscard]] std::unique_ptr<QStandardItemModel> standardModel();

} // namespace bench
