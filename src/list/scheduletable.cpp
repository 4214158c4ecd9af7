#include "scheduletable.h"

#include "colorselectdelegate.h"
#include "listselectionmodel.h"
#include "rowruns.h"
#include "schedulemodedelegate.h"
#include "schedulemodel.h"
#include "scheduleproxymodel.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <array>

namespace {

class ListDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override
    {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const bool isCut = sizeHint(option, index).width() > option.rect.width();
        const QString text = QStringLiteral("<p>%1</p>").arg(index.data().toString().toHtmlEscaped());
        QToolTip::showText(event->globalPos(), isCut ? text : QString(), view);
        return true;
    }
};

} // namespace

ScheduleTable::ScheduleTable(QWidget *parent)
    : QTableView(parent)
{
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setItemDelegate(new ListDelegate(this));
    setItemDelegateForColumn(ScheduleModel::ColorColumn, new ColorSelectDelegate(this));
    setItemDelegateForColumn(ScheduleModel::TypeColumn, new ScheduleModeDelegate(this));
}

void ScheduleTable::setModels(ScheduleModel *model, ScheduleProxyModel *proxy)
{
    m_model = model;
    m_proxy = proxy;
    // setModel() creates a selection model per view, and a replaced one stays connected. The headers are set first,
    // because setting those of the table also sets those of its headers.
    const std::array<QAbstractItemView *, 3> views{verticalHeader(), horizontalHeader(), this};
    for (QAbstractItemView *view : views) {
        view->setModel(proxy);
        view->selectionModel()->deleteLater();
    }
    setSelectionModel(new scheduleview::ListSelectionModel(proxy, this));

    const auto header = horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(ScheduleModel::ColorColumn, QHeaderView::ResizeToContents);
    header->setSortIndicator(ScheduleModel::NameColumn, Qt::AscendingOrder);
    header->setTextElideMode(Qt::ElideRight);
    header->setHighlightSections(false);
    // All swatches have the same size, so measuring the visible rows is enough.
    header->setResizeContentsPrecision(0);
}

void ScheduleTable::sortAgain()
{
    sortByColumn(horizontalHeader()->sortIndicatorSection(), horizontalHeader()->sortIndicatorOrder());
}

void ScheduleTable::selectSchedule(qint32 id)
{
    const auto index = m_proxy->mapFromSource(m_model->index(m_model->row(id), 0));
    setCurrentIndex(index);
    selectionModel()->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QList<int> ScheduleTable::selectedRows() const
{
    QList<int> rows;
    for (const auto &range : selectionModel()->selection()) {
        for (int row = range.top(); range.isValid() && row <= range.bottom(); ++row)
            rows.append(row);
    }
    scheduleview::sortUnique(rows);
    return rows;
}

orvex::SCHEDULE_DATA ScheduleTable::recordOf(int row) const
{
    return m_model->record(m_proxy->mapToSource(m_proxy->index(row, 0)).row());
}
