#include "calendarwidget.h"

#include "calendardaysmodel.h"
#include "localstorage.h"
#include "scheduleutil.h"
#include "shiftguide.h"
#include "svc.h"

#include <QLoggingCategory>
#include <QMenu>
#include <QRect>
#include <QTableView>
#include <QTextDocument>

#include <algorithm>

namespace {

/// Reduces a batch of changes to one repaint: collecting hundreds of changed cells is slower than painting the grid.
class RepaintOnce
{
public:
    explicit RepaintOnce(QWidget *viewport)
        : m_viewport(viewport)
        , m_enabled(viewport->updatesEnabled())
    {
        m_viewport->setUpdatesEnabled(false);
    }
    ~RepaintOnce() { m_viewport->setUpdatesEnabled(m_enabled); }
    Q_DISABLE_COPY_MOVE(RepaintOnce)

private:
    QWidget *const m_viewport;
    const bool m_enabled;
};

struct ShiftEntry
{
    QString sortKey;
    QString text;
    unsigned int id = 0;
};

/// The guide's shifts in menu order: by name regardless of case, equal names in the guide's order.
QVector<ShiftEntry> sortedShifts()
{
    const auto shifts = shiftguide::shifts();
    const auto ids = shifts->keys();
    QVector<ShiftEntry> entries;
    entries.reserve(ids.size());
    for (const unsigned int id : ids) {
        const orvex::ObjectInfo shift = shifts->value(id);
        const QString name = shift.parameter(db::param::NAME);
        const QString text = QStringLiteral("%1 %2").arg(shift.parameter(db::param::CODE), name).trimmed();
        entries.append({name.toLower(), text, id});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const ShiftEntry &a, const ShiftEntry &b) { return a.sortKey < b.sortKey; });
    return entries;
}

} // namespace

CalendarWidget::CalendarWidget(QWidget *parent)
    : QWidget(parent)
{
}

void CalendarWidget::setCalendar(QTableView *view, CalendarDaysModel *model)
{
    m_view = view;
    m_daysModel = model;
    m_view->setModel(m_daysModel);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_view, &QWidget::customContextMenuRequested, this, &CalendarWidget::showContexMenu);
    const auto storage = orvex::LocalStorage::instance();
    connect(storage, &orvex::LocalStorage::objectChanged, this, &CalendarWidget::onGuideChanged);
    connect(storage, &orvex::LocalStorage::objectRemoved, this, &CalendarWidget::onGuideChanged);
}

void CalendarWidget::focusGrid()
{
    m_view->setFocus();
}

void CalendarWidget::onGuideChanged(const QString &dataName)
{
    if (!shiftguide::isGuide(dataName))
        return;
    m_daysModel->updateDays();
    m_daysModel->updateTotal();
}

void CalendarWidget::setDays(const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    // The days may be read again while the operator works: keep the selection.
    const auto selection = m_view->selectionModel();
    const QModelIndex current = selection->currentIndex();
    const auto ranges = selection->selection();
    QVector<QRect> selected;
    for (const QItemSelectionRange &range : ranges)
        selected.append({QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom())});
    m_daysModel->setCalendarDays(days);
    for (const QRect &cells : qAsConst(selected)) {
        selection->select(
            {m_daysModel->index(cells.top(), cells.left()), m_daysModel->index(cells.bottom(), cells.right())},
            QItemSelectionModel::Select);
    }
    // The view must not scroll to the current cell.
    m_view->setAutoScroll(false);
    selection->setCurrentIndex(m_daysModel->index(current.row(), current.column()), QItemSelectionModel::NoUpdate);
    m_view->setAutoScroll(true);
}

QList<orvex::SCHEDULE_CALENDAR_DAY> CalendarWidget::days() const
{
    return m_daysModel->calendarDays();
}

void CalendarWidget::setColor(const QString &color)
{
    m_daysModel->setColor(color);
    m_view->viewport()->update();
}

void CalendarWidget::showContexMenu(const QPoint &pos)
{
    auto menu = new QMenu(this);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);

    const auto shiftMenu = menu->addMenu(tr("Задать смену"));
    shiftMenu->setEnabled(!m_view->selectionModel()->selectedIndexes().isEmpty());
    shiftMenu->setToolTipsVisible(true);
    connect(shiftMenu, &QMenu::triggered, this, &CalendarWidget::applyShiftAction);
    addShifts(shiftMenu);

    const auto periodMenu = menu->addMenu(tr("Применить периодичность"));
    periodMenu->setEnabled(isContinuesSelection());
    addPeriods(periodMenu);

    menu->popup(m_view->viewport()->mapToGlobal(pos));
}

void CalendarWidget::addShifts(QMenu *menu) const
{
    menu->addAction(tr("Справочник"))->setData(QString(orvex::SCHEDULE_SHIFT_GUIDES));
    menu->addSeparator();
    menu->addAction(tr("Выходной"));
    for (const ShiftEntry &shift : sortedShifts()) {
        QString text = shift.text;
        const auto action = menu->addAction(text.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setData(shift.id);
        // A tool tip would interpret markup in the name.
        action->setToolTip(Qt::mightBeRichText(shift.text) ? QStringLiteral("<p>%1</p>").arg(shift.text.toHtmlEscaped())
                                                           : shift.text);
    }
}

void CalendarWidget::addPeriods(QMenu *menu)
{
    connect(menu->addAction(tr("До конца месяца")), &QAction::triggered, this, &CalendarWidget::applyMonthPeriodic);
}

void CalendarWidget::applyShiftAction(QAction *action)
{
    if (!action) {
        qCWarning(svc()) << "empty action";
        return;
    }
    if (action->data().toString() == orvex::SCHEDULE_SHIFT_GUIDES) {
        emit showShiftGuides();
        return;
    }
    const auto shift = quint32(action->data().toLongLong());
    const RepaintOnce batch(m_view->viewport());
    const auto selected = m_view->selectionModel()->selectedIndexes();
    for (const QModelIndex &index : selected)
        m_daysModel->setData(index, shift, CalendarDaysModel::ShiftIdRole);
    m_daysModel->updateTotal();
}

QModelIndexList CalendarWidget::selectionInReadingOrder() const
{
    QModelIndexList selected = m_view->selectionModel()->selectedIndexes();
    std::sort(selected.begin(), selected.end(), [](const QModelIndex &a, const QModelIndex &b) {
        return a.row() != b.row() ? a.row() < b.row() : a.column() < b.column();
    });
    return selected;
}

bool CalendarWidget::isContinuesSelection() const
{
    const QModelIndexList selected = selectionInReadingOrder();
    if (selected.size() < 2)
        return false;
    QDate previous;
    for (const QModelIndex &index : selected) {
        const QDate date = m_daysModel->dateFromIndex(index);
        if (previous.isValid() && previous.daysTo(date) != 1)
            return false;
        previous = date;
    }
    return true;
}

void CalendarWidget::applyMonthPeriodic()
{
    repeatSelection(&ScheduleUtil::lastOfMonth);
}

void CalendarWidget::repeatSelection(QDate (*lastDay)(const QDate &start))
{
    const QModelIndexList selected = selectionInReadingOrder();
    if (selected.isEmpty())
        return;
    const RepaintOnce batch(m_view->viewport());
    const QDate start = m_daysModel->dateFromIndex(selected.last()).addDays(1);
    const qint64 count = start.daysTo(lastDay(start)) + 1;
    for (int i = 0; i < count; ++i) {
        const auto shift = selected.at(i % selected.size()).data(CalendarDaysModel::ShiftIdRole).toLongLong();
        m_daysModel->setData(m_daysModel->dateToIndex(start.addDays(i)), quint32(shift),
                             CalendarDaysModel::ShiftIdRole);
    }
    m_daysModel->updateTotal();
}
