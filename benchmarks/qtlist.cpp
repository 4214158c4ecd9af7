#include "qtlist.h"

#include "colorselectdelegate.h"
#include "localstorage.h"
#include "schedulemodedelegate.h"
#include "schedulemodel.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QSortFilterProxyModel>

namespace bench {

class QtList::Proxy final : public QSortFilterProxyModel
{
public:
    void setTypes(const QList<int> &types)
    {
        m_types = types;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        const auto type = sourceModel()->index(row, ScheduleModel::TypeColumn, parent).data(ScheduleModel::SortRole);
        return m_types.contains(type.toInt()) && QSortFilterProxyModel::filterAcceptsRow(row, parent);
    }

private:
    QList<int> m_types;
};

QtList::QtList(QAbstractItemModel *filled)
    : m_filled(filled)
    , m_proxy(std::make_unique<Proxy>())
    , m_repainter(m_table.viewport())
{
    m_proxy->setSortCaseSensitivity(Qt::CaseInsensitive);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_proxy->setFilterKeyColumn(ScheduleModel::NameColumn);
    m_proxy->setSortRole(ScheduleModel::SortRole);
    m_table.setShowGrid(false);
    m_table.setAlternatingRowColors(true);
    m_table.setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table.verticalHeader()->hide();
    m_table.setItemDelegateForColumn(ScheduleModel::ColorColumn, new ColorSelectDelegate(&m_table));
    m_table.setItemDelegateForColumn(ScheduleModel::TypeColumn, new ScheduleModeDelegate(&m_table));
    m_table.resize(ListWindowSize);
    m_table.show();
    QCoreApplication::processEvents();
}

QtList::~QtList() = default;

void QtList::open()
{
    m_proxy->setTypes({orvex::ScheduleFixed, orvex::ScheduleShift, orvex::ScheduleCalendar, orvex::ScheduleFree});
    m_proxy->setSourceModel(m_filled);
    m_table.setModel(m_proxy.get());
    m_table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table.horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_table.horizontalHeader()->setSortIndicator(ScheduleModel::NameColumn, Qt::AscendingOrder);
    m_table.setSortingEnabled(true);
    hide({ScheduleModel::EmployeeColumn, ScheduleModel::NumberColumn, ScheduleModel::PeriodColumn});
    paint();
}

void QtList::showPersonal()
{
    m_proxy->setTypes({orvex::SchedulePersonal});
    hide({ScheduleModel::NameColumn, ScheduleModel::TypeColumn});
    m_table.sortByColumn(ScheduleModel::PeriodColumn, Qt::DescendingOrder);
    paint();
}

void QtList::filter(const QString &text)
{
    m_proxy->setFilterFixedString(text);
    paint();
}

int QtList::rowCount() const
{
    return m_proxy->rowCount();
}

void QtList::hide(const QList<int> &columns)
{
    for (int column = 0; column < ScheduleModel::ColumnCount; ++column)
        m_table.setColumnHidden(column, columns.contains(column));
}

void QtList::paint()
{
    m_repainter.repaint(m_table.viewport());
}

std::unique_ptr<QStandardItemModel> standardModel()
{
    const auto schedules = orvex::LocalStorage::instance()->schedules();
    auto model = std::make_unique<QStandardItemModel>(schedules.size(), ScheduleModel::ColumnCount);
    ScheduleModel source;
    ScheduleModel::Records records;
    for (const auto &schedule : schedules)
        records.push_back(&schedule);
    source.storeRecords(records);
    for (int row = 0; row < source.rowCount(); ++row) {
        for (int column = 0; column < ScheduleModel::ColumnCount; ++column) {
            const auto from = source.index(row, column);
            auto *item = new QStandardItem;
            for (const int role : {int(Qt::DisplayRole), int(Qt::DecorationRole), int(ScheduleModel::SortRole)})
                item->setData(from.data(role), role);
            item->setEditable(false);
            model->setItem(row, column, item);
        }
    }
    return model;
}

} // namespace bench
