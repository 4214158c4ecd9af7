#include "workmodeeditor.h"

#include "CheckBoxDelegate.h"
#include "datetimedelegate.h"
#include "dayschedulemodel.h"
#include "scheduleutil.h"
#include "shiftdaydelegate.h"
#include "shiftdelegate.h"
#include "shiftmodel.h"
#include "shifttimemodel.h"
#include "svc.h"

#include <QAbstractSpinBox>
#include <QHeaderView>
#include <QLoggingCategory>
#include <QMenu>
#include <QSet>
#include <QTableView>

#include <algorithm>

namespace {

using orvex::SCHEDULE_DAY;

const SCHEDULE_DAY NewDay = {-1};

/// Replaces a time out of range by the time of day that the editor displays for it; 24:00 is in range.
qint32 normalizedTime(qint32 seconds)
{
    const bool isInRange = seconds >= 0 && seconds <= ScheduleUtil::SecondsPerDay;
    return isInRange ? seconds : ScheduleUtil::secondsOf(ScheduleUtil::timeOf(seconds));
}

/// A day off has no shift; a day whose shift is not in the list becomes a day off.
void normalizeDay(SCHEDULE_DAY &day, const QList<orvex::SCHEDULE_SHIFT> &shifts)
{
    const bool hasShift = day.shift >= 0 && day.shift < shifts.size();
    if (day.dayOff || (!hasShift && day.shift != -1))
        day.clear();
    else
        day.shiftId = hasShift ? shifts.at(day.shift).id : -1;
}

QString shiftSpanText(int position, const orvex::SCHEDULE_SHIFT &shift)
{
    if (shift.times.isEmpty())
        return ShiftDelegate::shiftText(position, 0, 0);
    const auto startsEarlier = [](const auto &a, const auto &b) { return a.start < b.start; };
    const auto endsEarlier = [](const auto &a, const auto &b) { return a.finish < b.finish; };
    return ShiftDelegate::shiftText(position,
                                    std::min_element(shift.times.cbegin(), shift.times.cend(), startsEarlier)->start,
                                    std::max_element(shift.times.cbegin(), shift.times.cend(), endsEarlier)->finish);
}

void makeLastRowCurrent(QTableView *view)
{
    const auto last = view->model()->index(view->model()->rowCount() - 1, 0);
    view->clearSelection();
    view->selectionModel()->setCurrentIndex(last, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void initView(QTableView *view, QAbstractItemModel *model)
{
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    view->setModel(model);
}

/// Completes the input in an open time field; its delegate then writes it to the model.
void commitTimeField(const QTableView *view)
{
    if (auto *field = qobject_cast<QAbstractSpinBox *>(view->indexWidget(view->currentIndex())))
        field->interpretText();
}

} // namespace

WorkModeEditor::WorkModeEditor(orvex::SCHEDULE_DATA *schedule, const Views &views, QWidget *editor)
    : m_schedule(schedule)
    , m_views(views)
    , m_days(new DayScheduleModel(schedule, editor))
    , m_shifts(new ShiftModel(schedule, editor))
    , m_times(new ShiftTimeModel(schedule, editor))
{
    initView(m_views.days, m_days);
    initView(m_views.shifts, m_shifts);
    initView(m_views.times, m_times);
    const auto format =
        schedule->type == orvex::ScheduleFixed ? ShiftDayDelegate::ShowWeekday : ShiftDayDelegate::ShowDateAndWeekday;
    m_dayDelegate = new ShiftDayDelegate({}, format, {}, editor);
    m_views.days->setItemDelegateForColumn(DayScheduleModel::DayColumn, m_dayDelegate);
    m_views.days->setItemDelegateForColumn(DayScheduleModel::ShiftColumn, new ShiftDelegate(schedule, editor));
    m_views.days->setItemDelegateForColumn(DayScheduleModel::DayOffColumn, new CheckBoxDelegate(editor));
    m_views.times->setItemDelegate(new DateTimeDelegate(editor));
}

WorkModeEditor::~WorkModeEditor()
{
    for (QTableView *view : {m_views.days, m_views.shifts, m_views.times})
        view->setModel(nullptr);
}

void WorkModeEditor::setReferenceDate(const QDate &date)
{
    m_dayDelegate->start = date.isNull() ? QDateTime() : QDateTime(date, QTime(0, 0));
    m_views.days->viewport()->update();
}

void WorkModeEditor::setCurrentShift(int position)
{
    m_times->setCurrentShift(position);
}

void WorkModeEditor::makeWeek()
{
    while (m_days->rowCount() < ScheduleUtil::DaysPerWeek)
        m_days->insertRow(m_days->rowCount(), NewDay);
    while (m_days->rowCount() > ScheduleUtil::DaysPerWeek)
        m_days->removeRow(m_days->rowCount() - 1);
}

void WorkModeEditor::removeAllDays()
{
    while (m_days->rowCount() > 0)
        m_days->removeRow(m_days->rowCount() - 1);
}

void WorkModeEditor::addDay()
{
    if (m_schedule->type == orvex::ScheduleShift && m_days->insertRow(m_days->rowCount(), NewDay))
        makeLastRowCurrent(m_views.days);
}

void WorkModeEditor::removeDay()
{
    const auto current = m_views.days->currentIndex();
    if (m_schedule->type == orvex::ScheduleShift && current.isValid())
        m_days->removeRow(current.row());
}

void WorkModeEditor::addShift()
{
    commitTimeField(m_views.times);
    // A day whose position is past the end of the list must not get the new shift.
    for (auto &day : m_schedule->days)
        normalizeDay(day, m_schedule->shifts);
    orvex::SCHEDULE_SHIFT shift;
    shift.id = -1;
    if (!m_shifts->insertRow(m_shifts->rowCount(), shift))
        return;
    makeLastRowCurrent(m_views.shifts);
    addTime();
    m_views.times->setFocus();
}

void WorkModeEditor::removeShift()
{
    const auto current = m_views.shifts->currentIndex();
    if (!current.isValid())
        return;
    const int position = current.row();
    for (auto &day : m_schedule->days) {
        if (day.shift == position)
            day.clear();
        else if (day.shift > position)
            --day.shift;
    }
    m_shifts->removeRow(position);
    m_times->setCurrentShift(m_views.shifts->currentIndex().row());
}

void WorkModeEditor::addTime()
{
    commitTimeField(m_views.times);
    orvex::SCHEDULE_SHIFT_TIME time;
    time.id = -1;
    if (m_times->insertRow(m_times->rowCount(), time))
        makeLastRowCurrent(m_views.times);
}

void WorkModeEditor::removeTime()
{
    const auto current = m_views.times->currentIndex();
    if (current.isValid())
        m_times->removeRow(current.row());
}

void WorkModeEditor::moveTime(int step)
{
    const auto current = m_views.times->currentIndex();
    const int target = current.row() + step;
    if (!current.isValid() || target < 0 || target >= m_times->rowCount()) {
        qCWarning(svc()) << "wrong index";
        return;
    }
    commitTimeField(m_views.times);
    const auto moved = m_times->time(current.row());
    m_times->updateRow(current.row(), m_times->time(target));
    m_times->updateRow(target, moved);
    m_views.times->selectionModel()->setCurrentIndex(m_times->index(target, current.column()),
                                                     QItemSelectionModel::ClearAndSelect);
}

bool WorkModeEditor::handleKey(const QObject *watched, int key)
{
    struct List
    {
        QTableView *view;
        void (WorkModeEditor::*add)();
        void (WorkModeEditor::*remove)();
    };
    const List lists[] = {
        {m_views.days, &WorkModeEditor::addDay, &WorkModeEditor::removeDay},
        {m_views.shifts, &WorkModeEditor::addShift, &WorkModeEditor::removeShift},
        {m_views.times, &WorkModeEditor::addTime, &WorkModeEditor::removeTime},
    };
    if (key != Qt::Key_Insert && key != Qt::Key_Delete)
        return false;
    const auto list =
        std::find_if(std::begin(lists), std::end(lists), [watched](const List &l) { return l.view == watched; });
    // Ignore a key that an open cell editor has not used.
    if (list == std::end(lists) || list->view->indexWidget(list->view->currentIndex()))
        return false;
    (this->*(key == Qt::Key_Insert ? list->add : list->remove))();
    return true;
}

QMenu *WorkModeEditor::createShiftMenu(QWidget *parent) const
{
    auto *menu = new QMenu(parent);
    menu->addAction(tr("Выходной"))->setData(-1);
    auto *shifts = menu->addMenu(tr("Смены"));
    for (int i = 0; i < m_schedule->shifts.size(); ++i)
        shifts->addAction(shiftSpanText(i, m_schedule->shifts.at(i)))->setData(i);
    return menu;
}

void WorkModeEditor::setSelectedDays(int shift)
{
    const auto selected = m_views.days->selectionModel()->selectedIndexes();
    QSet<int> rows;
    for (const auto &index : selected)
        rows.insert(index.row());
    for (const int row : qAsConst(rows))
        m_days->setData(m_days->index(row, DayScheduleModel::ShiftColumn), shift, Qt::EditRole);
}

void WorkModeEditor::finish()
{
    commitTimeField(m_views.times);
    for (auto &shift : m_schedule->shifts) {
        for (auto &time : shift.times) {
            time.start = normalizedTime(time.start);
            time.finish = normalizedTime(time.finish);
        }
    }
    for (auto &day : m_schedule->days)
        normalizeDay(day, m_schedule->shifts);
}
