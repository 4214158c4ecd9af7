#include "scheduleeditdialog.h"

#include "CheckBoxDelegate.h"
#include "datetimedelegate.h"
#include "dayschedulemodel.h"
#include "shiftdaydelegate.h"
#include "shiftdelegate.h"
#include "shiftmodel.h"
#include "shifttimemodel.h"
#include "scheduleutil.h"
#include "svc.h"
#include "ui_scheduleeditdialog.h"
#include "windowsize.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMenu>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>

namespace {

using orvex::SCHEDULE_DATA;
using orvex::SCHEDULE_DAY;

constexpr int DaysInWeek = 7;
constexpr int Minute = 60;
constexpr int Hour = 60 * Minute;
constexpr int Day = 24 * Hour;

const SCHEDULE_DAY NewDay = {-1};

/// Length of a working day in seconds; one that ends earlier than it starts ends on the next day.
int spanOf(const QTime &start, const QTime &finish)
{
    const int span = ScheduleUtil::secondsOf(finish) - ScheduleUtil::secondsOf(start);
    return span < 0 ? span + Day : span;
}

QColor colorOf(const QString &name)
{
    return QColor::isValidColor(name) ? QColor(name) : QColor();
}

/// The time of day that the editor shows for a time out of range; 24:00 is in range.
qint32 soundTime(qint32 seconds)
{
    return seconds >= 0 && seconds <= Day ? seconds : ScheduleUtil::secondsOf(ScheduleUtil::timeOf(seconds));
}

/// A day that is off carries no shift; one whose shift is not in the list is off.
void makeSound(SCHEDULE_DAY &day, const QList<orvex::SCHEDULE_SHIFT> &shifts)
{
    const bool hasShift = day.shift >= 0 && day.shift < shifts.size();
    if (day.dayOff || (!hasShift && day.shift != -1))
        day.clear();
    else
        day.shiftId = hasShift ? shifts.at(day.shift).id : -1;
}

void makeSound(SCHEDULE_DATA &schedule)
{
    for (auto &shift : schedule.shifts) {
        for (auto &time : shift.times) {
            time.start = soundTime(time.start);
            time.finish = soundTime(time.finish);
        }
    }
    for (auto &day : schedule.days)
        makeSound(day, schedule.shifts);
}

QString shiftSpanText(int position, const orvex::SCHEDULE_SHIFT &shift)
{
    if (shift.times.isEmpty())
        return ShiftDelegate::shiftText(position, 0, 0);
    const auto earlier = [](const auto &a, const auto &b) { return a.start < b.start; };
    const auto sooner = [](const auto &a, const auto &b) { return a.finish < b.finish; };
    return ShiftDelegate::shiftText(position,
                                    std::min_element(shift.times.cbegin(), shift.times.cend(), earlier)->start,
                                    std::max_element(shift.times.cbegin(), shift.times.cend(), sooner)->finish);
}

void makeLastRowCurrent(QTableView *view)
{
    const auto last = view->model()->index(view->model()->rowCount() - 1, 0);
    view->clearSelection();
    view->selectionModel()->setCurrentIndex(last, QItemSelectionModel::ClearAndSelect);
}

void initView(QTableView *view, QAbstractItemModel *model, int rowHeight)
{
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    view->verticalHeader()->setDefaultSectionSize(rowHeight);
    view->setModel(model);
}

} // namespace

ScheduleEditDialog::ScheduleEditDialog(const orvex::SCHEDULE_DATA &schedule, QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::ScheduleEditDialog>())
    , m_schedule(schedule)
    , m_days(new DayScheduleModel(&m_schedule, this))
    , m_shifts(new ShiftModel(&m_schedule, this))
    , m_times(new ShiftTimeModel(&m_schedule, this))
{
    m_ui->setupUi(this);
    initTypes();
    initScalars();
    updateDayModel();
    updateShiftModel();
    updateTimeModel();
    connectControls();
    applyMode();
    connectFreeLimits();
    loadFreeLimits();
    connect(m_ui->nameWidget, &ScheduleNameWidget::colorChanged, m_ui->calendarWidget, &CalendarYearWidget::setColor);
    updateButtonsEnabled();
    initToolButtons();
    setStartSize();
    m_ui->nameWidget->setFocus();
}

ScheduleEditDialog::~ScheduleEditDialog()
{
    // The views go after the record: one that is still shown would ask its model about it.
    for (QTableView *view : {m_ui->tvMode, m_ui->tvShift, m_ui->tvTime})
        view->setModel(nullptr);
}

orvex::SCHEDULE_DATA ScheduleEditDialog::schedule() const
{
    return m_schedule;
}

int ScheduleEditDialog::calendarYear() const
{
    return m_ui->calendarWidget->year();
}

QList<orvex::SCHEDULE_CALENDAR_DAY> ScheduleEditDialog::calendarDays() const
{
    return m_ui->calendarWidget->days();
}

void ScheduleEditDialog::initTypes()
{
    auto *types = m_ui->cbScheduleType;
    types->addItem(tr("Фиксированный"), int(orvex::ScheduleFixed));
    types->addItem(tr("Сменный"), int(orvex::ScheduleShift));
    types->addItem(tr("Календарный"), int(orvex::ScheduleCalendar));
    types->addItem(tr("Ненормированный"), int(orvex::ScheduleFree));
    types->setCurrentIndex(types->findData(int(m_schedule.type)));
    connect(types, qOverload<int>(&QComboBox::currentIndexChanged), this, &ScheduleEditDialog::slotTypeChanged);
    types->setEnabled(false);
}

void ScheduleEditDialog::initScalars()
{
    m_ui->dateWidget->setVisible(m_schedule.type == orvex::ScheduleShift);
    connect(m_ui->rbCalendar, &QRadioButton::toggled, m_ui->deStartDate, &QWidget::setEnabled);
    const bool byCalendar = m_schedule.startDate.isValid();
    m_ui->deStartDate->setDate(byCalendar ? m_schedule.startDate : QDate::currentDate());
    (byCalendar ? m_ui->rbCalendar : m_ui->rbEmployee)->setChecked(true);

    m_ui->nameWidget->setName(m_schedule.name);
    m_ui->nameWidget->setColor(colorOf(m_schedule.color));
    m_ui->cbUseHolidays->setChecked(m_schedule.useHolidays == 1);
}

void ScheduleEditDialog::updateDayModel()
{
    auto *view = m_ui->tvMode;
    initView(view, m_days, m_ui->cbScheduleType->sizeHint().height());
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ScheduleEditDialog::slotDayDataChanged);
    connect(m_days, &QAbstractItemModel::rowsRemoved, this, &ScheduleEditDialog::updateButtonsEnabled);

    const auto format =
        m_schedule.type == orvex::ScheduleFixed ? ShiftDayDelegate::ShowWeekday : ShiftDayDelegate::ShowDateAndWeekday;
    view->setItemDelegateForColumn(DayScheduleModel::DayColumn,
                                   new ShiftDayDelegate(m_ui->deStartDate->dateTime(), format, {}, this));
    view->setItemDelegateForColumn(DayScheduleModel::ShiftColumn, new ShiftDelegate(&m_schedule, this));
    view->setItemDelegateForColumn(DayScheduleModel::DayOffColumn, new CheckBoxDelegate(this));
    view->installEventFilter(this);
    showPeriod();
}

void ScheduleEditDialog::updateShiftModel()
{
    auto *view = m_ui->tvShift;
    initView(view, m_shifts, m_ui->cbScheduleType->sizeHint().height());
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ScheduleEditDialog::slotShiftCurrentChanged);
    connect(m_shifts, &QAbstractItemModel::rowsRemoved, this, &ScheduleEditDialog::updateButtonsEnabled);
    view->installEventFilter(this);
    if (m_shifts->rowCount() > 0)
        view->selectionModel()->setCurrentIndex(m_shifts->index(0, 0), QItemSelectionModel::ClearAndSelect);
    updateButtonsEnabled();
}

void ScheduleEditDialog::updateTimeModel()
{
    auto *view = m_ui->tvTime;
    initView(view, m_times, m_ui->cbScheduleType->sizeHint().height());
    view->setItemDelegate(new DateTimeDelegate(this));
    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ScheduleEditDialog::slotTimeCurrentChangedf);
    connect(m_times, &QAbstractItemModel::rowsRemoved, this, &ScheduleEditDialog::updateButtonsEnabled);
    connect(m_times, &QAbstractItemModel::modelReset, this, &ScheduleEditDialog::updateButtonsEnabled);
    view->installEventFilter(this);
    updateButtonsEnabled();
}

void ScheduleEditDialog::connectControls()
{
    connect(m_ui->tbMoveUp, &QToolButton::clicked, this, &ScheduleEditDialog::moveTimeUp);
    connect(m_ui->tbMoveDown, &QToolButton::clicked, this, &ScheduleEditDialog::moveTimeDown);
    connect(m_ui->tvMode, &QWidget::customContextMenuRequested, this,
            &ScheduleEditDialog::slotModeContextMenuRequested);
    connect(m_ui->deStartDate, &QDateEdit::dateChanged, this, &ScheduleEditDialog::startDateChanged);
    connect(m_ui->rbCalendar, &QRadioButton::clicked, this, &ScheduleEditDialog::startDateChanged);
    connect(m_ui->rbEmployee, &QRadioButton::clicked, this, &ScheduleEditDialog::startDateChanged);
    connect(m_ui->calendarWidget, &CalendarYearWidget::yearChanged, this, &ScheduleEditDialog::slotCalendarYearChanged);
    connect(m_ui->calendarWidget, &CalendarYearWidget::showShiftGuides, this, &ScheduleEditDialog::showShiftGuides);
}

void ScheduleEditDialog::connectFreeLimits()
{
    connect(m_ui->cbFreeUseStart, &QCheckBox::toggled, m_ui->freeStartEdit, &QWidget::setEnabled);
    connect(m_ui->cbFreeUseFinish, &QCheckBox::toggled, m_ui->freeFinishEdit, &QWidget::setEnabled);
    connect(m_ui->cbFreeUseNorm, &QCheckBox::toggled, m_ui->freeNormHEdit, &QWidget::setEnabled);
    connect(m_ui->cbFreeUseNorm, &QCheckBox::toggled, m_ui->freeNormMEdit, &QWidget::setEnabled);
    connect(m_ui->cbFreeUseBreak, &QCheckBox::toggled, m_ui->freeBreakEdit, &QWidget::setEnabled);

    const auto valueChanged = qOverload<int>(&QSpinBox::valueChanged);
    connect(m_ui->freeStartEdit, &QTimeEdit::timeChanged, this, &ScheduleEditDialog::updateFreeNorm);
    connect(m_ui->freeFinishEdit, &QTimeEdit::timeChanged, this, &ScheduleEditDialog::updateFreeNorm);
    connect(m_ui->freeBreakEdit, valueChanged, this, &ScheduleEditDialog::updateFreeNorm);
    connect(m_ui->freeNormHEdit, valueChanged, this, &ScheduleEditDialog::updateFreeBreak);
    connect(m_ui->freeNormMEdit, valueChanged, this, &ScheduleEditDialog::updateFreeBreak);
    connect(m_ui->cbFreeUseNorm, &QCheckBox::clicked, this, [this](bool checked) {
        if (checked)
            updateFreeNorm();
    });
    connect(m_ui->cbFreeUseBreak, &QCheckBox::clicked, this, [this](bool checked) {
        if (checked)
            updateFreeBreak();
    });
}

void ScheduleEditDialog::loadFreeLimits()
{
    m_ui->cbFreeUseStart->setChecked(m_schedule.freeStart != 0);
    m_ui->cbFreeUseFinish->setChecked(m_schedule.freeFinish != 0);
    m_ui->cbFreeUseNorm->setChecked(m_schedule.freeNorm != 0);
    m_ui->cbFreeUseBreak->setChecked(m_schedule.freeBreak != 0);
    m_ui->freeStartEdit->setTime(ScheduleUtil::timeOf(m_schedule.freeStart));
    m_ui->freeFinishEdit->setTime(ScheduleUtil::timeOf(m_schedule.freeFinish));
    m_ui->freeNormHEdit->setValue(m_schedule.freeNorm / Hour);
    m_ui->freeNormMEdit->setValue(m_schedule.freeNorm % Hour / Minute);
    m_ui->freeBreakEdit->setValue(m_schedule.freeBreak / Minute);
}

void ScheduleEditDialog::initToolButtons()
{
    // Icons grow with a font that the operator has enlarged.
    const int side = qMax(16, fontMetrics().height());
    const auto buttons = findChildren<QToolButton *>();
    for (QToolButton *button : buttons)
        button->setIconSize(QSize(side, side));
}

void ScheduleEditDialog::setStartSize()
{
    // A year of days is wide; the other pages need a column of text and a dozen rows.
    const bool calendar = m_schedule.type == orvex::ScheduleCalendar;
    resize(scheduleview::windowSize(*this, calendar ? QSize(200, 45) : QSize(80, 34)));
}

void ScheduleEditDialog::slotTypeChanged(int index)
{
    if (index < 0)
        return;
    m_schedule.type = orvex::ScheduleMode(m_ui->cbScheduleType->itemData(index).toInt());
    applyMode();
    updateButtonsEnabled();
}

void ScheduleEditDialog::applyMode()
{
    switch (m_schedule.type) {
    case orvex::ScheduleFixed:
        m_ui->stackedWidget->setCurrentWidget(m_ui->shiftPage);
        applyFixedMode();
        break;
    case orvex::ScheduleShift:
        m_ui->stackedWidget->setCurrentWidget(m_ui->shiftPage);
        setDaysEnabled(true, true);
        startDateChanged();
        break;
    case orvex::ScheduleCalendar:
        m_ui->stackedWidget->setCurrentWidget(m_ui->calendarPage);
        applyCalendarMode();
        break;
    case orvex::ScheduleFree:
        m_ui->stackedWidget->setCurrentWidget(m_ui->freePage);
        removeAllDays();
        setDaysEnabled(false, false);
        break;
    default:
        m_ui->stackedWidget->setCurrentWidget(m_ui->freePage);
        break;
    }
    showPeriod();
}

void ScheduleEditDialog::applyFixedMode()
{
    setDaysEnabled(false, true);
    while (m_days->rowCount() < DaysInWeek)
        m_days->insertRow(m_days->rowCount(), NewDay);
    while (m_days->rowCount() > DaysInWeek)
        m_days->removeRow(m_days->rowCount() - 1);
    m_ui->deStartDate->setDate(ScheduleUtil::mondayOf(m_ui->deStartDate->date()));
    startDateChanged();
}

void ScheduleEditDialog::applyCalendarMode()
{
    removeAllDays();
    setDaysEnabled(false, false);
    m_ui->calendarWidget->setColor(m_ui->nameWidget->colorName());
    m_ui->calendarWidget->setEnabled(false);
    QTimer::singleShot(0, this, [this] { emit calendarDaysRequest(m_schedule.id, calendarYear()); });
}

void ScheduleEditDialog::removeAllDays()
{
    while (m_days->rowCount() > 0)
        m_days->removeRow(m_days->rowCount() - 1);
}

void ScheduleEditDialog::setDaysEnabled(bool days, bool shifts)
{
    m_ui->tbAddDay->setEnabled(days);
    m_ui->tbDelDay->setEnabled(days);
    m_ui->gbShifts->setEnabled(shifts);
    m_ui->gbTimes->setEnabled(shifts);
}

void ScheduleEditDialog::startDateChanged()
{
    const QDate reference = m_ui->rbCalendar->isChecked() ? m_ui->deStartDate->date() : QDate();
    auto *delegate = qobject_cast<ShiftDayDelegate *>(m_ui->tvMode->itemDelegateForColumn(DayScheduleModel::DayColumn));
    if (!delegate)
        return;
    delegate->start = reference.isNull() ? QDateTime() : QDateTime(reference, QTime(0, 0));
    m_ui->tvMode->viewport()->update();
}

void ScheduleEditDialog::showPeriod()
{
    const QString caption = m_ui->labelNumDay->text().section(QLatin1Char(':'), 0, 0);
    m_ui->labelNumDay->setText(QStringLiteral("%1: %2").arg(caption).arg(m_schedule.days.size()));
}

void ScheduleEditDialog::updateButtonsEnabled()
{
    const bool byCycle = m_schedule.type == orvex::ScheduleShift;
    const auto time = m_ui->tvTime->currentIndex();
    m_ui->tbAddDay->setEnabled(byCycle);
    m_ui->tbDelDay->setEnabled(byCycle && m_ui->tvMode->currentIndex().isValid());
    m_ui->tbAddShift->setEnabled(true);
    m_ui->tbAddTime->setEnabled(true);
    m_ui->tbDelShift->setEnabled(m_ui->tvShift->currentIndex().isValid());
    m_ui->tbDelTime->setEnabled(time.isValid());
    m_ui->tbMoveUp->setEnabled(time.isValid() && time.row() > 0);
    m_ui->tbMoveDown->setEnabled(time.isValid() && time.row() < m_times->rowCount() - 1);
}

void ScheduleEditDialog::slotDayDataChanged()
{
    updateButtonsEnabled();
}

void ScheduleEditDialog::slotShiftCurrentChanged(const QModelIndex &current)
{
    m_times->setCurrentShift(current.row());
    updateButtonsEnabled();
}

void ScheduleEditDialog::slotTimeCurrentChangedf()
{
    updateButtonsEnabled();
}

bool ScheduleEditDialog::addDay()
{
    if (m_schedule.type != orvex::ScheduleShift || !m_days->insertRow(m_days->rowCount(), NewDay))
        return false;
    makeLastRowCurrent(m_ui->tvMode);
    return true;
}

bool ScheduleEditDialog::removeDay()
{
    const auto current = m_ui->tvMode->currentIndex();
    return m_schedule.type == orvex::ScheduleShift && current.isValid() && m_days->removeRow(current.row());
}

bool ScheduleEditDialog::addShift()
{
    commitEditor(m_ui->tvTime);
    // A day must not come to carry the new shift only because it pointed past the end of the list.
    for (auto &day : m_schedule.days)
        makeSound(day, m_schedule.shifts);
    orvex::SCHEDULE_SHIFT shift;
    shift.id = -1;
    if (!m_shifts->insertRow(m_shifts->rowCount(), shift))
        return false;
    makeLastRowCurrent(m_ui->tvShift);
    addTime();
    m_ui->tvTime->setFocus();
    return true;
}

bool ScheduleEditDialog::removeShift()
{
    const auto current = m_ui->tvShift->currentIndex();
    if (!current.isValid())
        return false;
    const int position = current.row();
    for (auto &day : m_schedule.days) {
        if (day.shift == position)
            day.clear();
        else if (day.shift > position)
            --day.shift;
    }
    m_shifts->removeRow(position);
    m_times->setCurrentShift(m_ui->tvShift->currentIndex().row());
    updateButtonsEnabled();
    return true;
}

bool ScheduleEditDialog::addTime()
{
    commitEditor(m_ui->tvTime);
    orvex::SCHEDULE_SHIFT_TIME time;
    time.id = -1;
    if (!m_times->insertRow(m_times->rowCount(), time))
        return false;
    makeLastRowCurrent(m_ui->tvTime);
    return true;
}

bool ScheduleEditDialog::removeTime()
{
    const auto current = m_ui->tvTime->currentIndex();
    return current.isValid() && m_times->removeRow(current.row());
}

void ScheduleEditDialog::moveTime(int step)
{
    const auto current = m_ui->tvTime->currentIndex();
    const int target = current.row() + step;
    if (!current.isValid() || target < 0 || target >= m_times->rowCount()) {
        qCWarning(svc()) << "wrong index";
        return;
    }
    commitEditor(m_ui->tvTime);
    const auto moved = m_times->time(current.row());
    m_times->updateRow(current.row(), m_times->time(target));
    m_times->updateRow(target, moved);
    m_ui->tvTime->selectionModel()->setCurrentIndex(m_times->index(target, current.column()),
                                                    QItemSelectionModel::ClearAndSelect);
}

void ScheduleEditDialog::moveTimeUp()
{
    moveTime(-1);
}

void ScheduleEditDialog::moveTimeDown()
{
    moveTime(1);
}

void ScheduleEditDialog::commitEditor(QTableView *view)
{
    const auto current = view->currentIndex();
    QWidget *editor = view->indexWidget(current);
    if (!editor)
        return;
    if (auto *field = qobject_cast<QAbstractSpinBox *>(editor))
        field->interpretText();
    emit view->itemDelegate(current)->commitData(editor);
}

bool ScheduleEditDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && handleListKey(watched, static_cast<QKeyEvent *>(event)->key()))
        return true;
    return QDialog::eventFilter(watched, event);
}

bool ScheduleEditDialog::handleListKey(QObject *watched, int key)
{
    struct List
    {
        QTableView *view;
        bool (ScheduleEditDialog::*add)();
        bool (ScheduleEditDialog::*remove)();
    };
    const List lists[] = {
        {m_ui->tvMode, &ScheduleEditDialog::addDay, &ScheduleEditDialog::removeDay},
        {m_ui->tvShift, &ScheduleEditDialog::addShift, &ScheduleEditDialog::removeShift},
        {m_ui->tvTime, &ScheduleEditDialog::addTime, &ScheduleEditDialog::removeTime},
    };
    if (key != Qt::Key_Insert && key != Qt::Key_Delete)
        return false;
    const auto list =
        std::find_if(std::begin(lists), std::end(lists), [watched](const List &l) { return l.view == watched; });
    // A key that an open cell editor had no use for is not meant for the list.
    if (list == std::end(lists) || list->view->indexWidget(list->view->currentIndex()))
        return false;
    (this->*(key == Qt::Key_Insert ? list->add : list->remove))();
    return true;
}

void ScheduleEditDialog::slotModeContextMenuRequested(const QPoint &pos)
{
    auto *menu = new QMenu(this);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    connect(menu, &QMenu::triggered, this, &ScheduleEditDialog::slotModeShiftSelected);
    menu->addAction(tr("Выходной"))->setData(-1);
    auto *shifts = menu->addMenu(tr("Смены"));
    for (int i = 0; i < m_schedule.shifts.size(); ++i)
        shifts->addAction(shiftSpanText(i, m_schedule.shifts.at(i)))->setData(i);
    menu->popup(m_ui->tvMode->viewport()->mapToGlobal(pos));
}

void ScheduleEditDialog::slotModeShiftSelected(QAction *action)
{
    if (!action)
        return;
    const int shift = action->data().toInt();
    const auto selected = m_ui->tvMode->selectionModel()->selectedIndexes();
    QSet<int> rows;
    for (const auto &index : selected)
        rows.insert(index.row());
    for (const int row : qAsConst(rows))
        m_days->setData(m_days->index(row, DayScheduleModel::ShiftColumn), shift, Qt::EditRole);
}

void ScheduleEditDialog::on_tabWidget_currentChanged(int index)
{
    if (index == 0)
        m_ui->tvMode->viewport()->update();
}

void ScheduleEditDialog::on_tbAddDay_clicked()
{
    addDay();
    showPeriod();
}

void ScheduleEditDialog::on_tbDelDay_clicked()
{
    removeDay();
    showPeriod();
}

void ScheduleEditDialog::on_tbAddShift_clicked()
{
    addShift();
}

void ScheduleEditDialog::on_tbDelShift_clicked()
{
    removeShift();
}

void ScheduleEditDialog::on_tbAddTime_clicked()
{
    if (m_ui->tvShift->currentIndex().isValid())
        addTime();
}

void ScheduleEditDialog::on_tbDelTime_clicked()
{
    removeTime();
}

void ScheduleEditDialog::updateFreeNorm()
{
    if (!m_ui->cbFreeUseStart->isChecked() || !m_ui->cbFreeUseFinish->isChecked() || !m_ui->cbFreeUseNorm->isChecked())
        return;
    const int span = spanOf(m_ui->freeStartEdit->time(), m_ui->freeFinishEdit->time());
    const int breakTime = m_ui->cbFreeUseBreak->isChecked() ? m_ui->freeBreakEdit->value() * Minute : 0;
    const int norm = qMax(0, span - breakTime);
    // The norm follows here; its own change must not drive the break in turn.
    const QSignalBlocker hours(m_ui->freeNormHEdit);
    const QSignalBlocker minutes(m_ui->freeNormMEdit);
    m_ui->freeNormHEdit->setValue(norm / Hour);
    m_ui->freeNormMEdit->setValue(norm % Hour / Minute);
}

void ScheduleEditDialog::updateFreeBreak()
{
    if (!m_ui->cbFreeUseStart->isChecked() || !m_ui->cbFreeUseFinish->isChecked() || !m_ui->cbFreeUseNorm->isChecked()
        || !m_ui->cbFreeUseBreak->isChecked())
        return;
    const int span = spanOf(m_ui->freeStartEdit->time(), m_ui->freeFinishEdit->time());
    const int norm = m_ui->freeNormHEdit->value() * Hour + m_ui->freeNormMEdit->value() * Minute;
    const QSignalBlocker blocker(m_ui->freeBreakEdit);
    m_ui->freeBreakEdit->setValue(qMax(0, span - norm) / Minute);
}

void ScheduleEditDialog::slotCalendarYearChanged(int year)
{
    requestCalendarDays(year);
}

void ScheduleEditDialog::requestCalendarDays(int year)
{
    QWidget *focus = QApplication::focusWidget();
    if (m_ui->calendarWidget->isAncestorOf(focus))
        m_calendarFocus = focus;
    m_ui->calendarWidget->setEnabled(false);
    emit calendarDaysRequest(m_schedule.id, year);
}

void ScheduleEditDialog::setCalendarDays(qint32 scheduleId, const QList<orvex::SCHEDULE_CALENDAR_DAY> &days)
{
    qCDebug(svc()) << "days" << scheduleId << days.size();
    if (scheduleId != m_schedule.id) {
        qCWarning(svc()) << "wrong schedule id" << m_schedule.id << scheduleId;
        return;
    }
    m_ui->calendarWidget->setDays(m_calendarEdits.merged(days, calendarDays(), calendarYear()));
    m_ui->calendarWidget->setEnabled(true);
    if (m_calendarFocus)
        m_calendarFocus->setFocus();
    m_calendarFocus.clear();
}

void ScheduleEditDialog::on_buttonBox_accepted()
{
    commitEditor(m_ui->tvMode);
    commitEditor(m_ui->tvTime);
    writeScalars();
    writeFreeLimits();
    makeSound(m_schedule);
    accept();
}

void ScheduleEditDialog::on_buttonBox_rejected()
{
    reject();
}

void ScheduleEditDialog::writeScalars()
{
    const bool perEmployee = m_schedule.type == orvex::ScheduleShift && !m_ui->rbCalendar->isChecked();
    m_schedule.name = m_ui->nameWidget->name();
    m_schedule.color = m_ui->nameWidget->colorName();
    m_schedule.startDate = perEmployee ? QDate() : m_ui->deStartDate->date();
    m_schedule.useHolidays = m_ui->cbUseHolidays->isChecked() ? 1 : 0;
}

void ScheduleEditDialog::writeFreeLimits()
{
    const auto limit = [](const QCheckBox *used, int seconds) { return used->isChecked() ? seconds : 0; };
    m_schedule.freeStart = limit(m_ui->cbFreeUseStart, ScheduleUtil::secondsOf(m_ui->freeStartEdit->time()));
    m_schedule.freeFinish = limit(m_ui->cbFreeUseFinish, ScheduleUtil::secondsOf(m_ui->freeFinishEdit->time()));
    m_schedule.freeNorm =
        limit(m_ui->cbFreeUseNorm, m_ui->freeNormHEdit->value() * Hour + m_ui->freeNormMEdit->value() * Minute);
    m_schedule.freeBreak = limit(m_ui->cbFreeUseBreak, m_ui->freeBreakEdit->value() * Minute);
}
