#include "calendarmonthwidget.h"

#include "calendarmonthitemdelegate.h"
#include "calendarmonthmodel.h"
#include "fieldguards.h"
#include "scheduleutil.h"
#include "ui_calendarmonthwidget.h"

#include <QHeaderView>
#include <QLocale>

CalendarMonthWidget::CalendarMonthWidget(QWidget *parent)
    : CalendarWidget(parent)
    , m_ui(std::make_unique<Ui::CalendarMonthWidget>())
    , m_model(new CalendarMonthModel(this))
{
    m_ui->setupUi(this);
    commitOnReturn(m_ui->sbYear);
    for (int month = 1; month <= ScheduleUtil::MonthsPerYear; ++month)
        m_ui->cbMonth->addItem(QLocale().monthName(month, QLocale::LongFormat), month);
    const QDate today = QDate::currentDate();
    setDate(today);
    m_model->setDate(today);
    setCalendar(m_ui->calendarView, m_model);

    const auto header = m_ui->calendarView->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(CalendarMonthModel::TotalColumn, QHeaderView::ResizeToContents);
    const auto delegate = new CalendarMonthItemDelegate(m_ui->calendarView);
    for (int column = CalendarMonthModel::MondayColumn; column < CalendarMonthModel::ColumnCount; ++column)
        m_ui->calendarView->setItemDelegateForColumn(column, delegate);

    connect(m_ui->sbYear, qOverload<int>(&QSpinBox::valueChanged), this, &CalendarMonthWidget::setYear);
    connect(m_ui->cbMonth, qOverload<int>(&QComboBox::currentIndexChanged), this, &CalendarMonthWidget::setMonth);
    connect(m_ui->tbClear, &QToolButton::clicked, this, &CalendarMonthWidget::clearDays);
    m_ui->calendarView->resizeColumnsToContents();
    m_ui->calendarView->resizeRowsToContents();
    // The form's minimum size is too small for a large font.
    setMinimumSize(minimumSize().expandedTo(layout()->minimumSize()));
}

CalendarMonthWidget::~CalendarMonthWidget() = default;

void CalendarMonthWidget::setDate(const QDate &date)
{
    m_ui->sbYear->setValue(date.year());
    m_ui->cbMonth->setCurrentIndex(m_ui->cbMonth->findData(date.month()));
}

QDate CalendarMonthWidget::date() const
{
    return QDate(m_ui->sbYear->value(), m_ui->cbMonth->currentData().toInt(), 1);
}

void CalendarMonthWidget::setDateEnabled(bool enabled)
{
    m_ui->sbYear->setEnabled(enabled);
    m_ui->cbMonth->setEnabled(enabled);
}

bool CalendarMonthWidget::isDateEnabled() const
{
    return m_ui->sbYear->isEnabled();
}

void CalendarMonthWidget::setYear(int year)
{
    showMonth(QDate(year, m_ui->cbMonth->currentData().toInt(), 1));
}

void CalendarMonthWidget::setMonth(int index)
{
    showMonth(QDate(m_ui->sbYear->value(), m_ui->cbMonth->itemData(index).toInt(), 1));
}

void CalendarMonthWidget::showMonth(const QDate &date)
{
    m_model->setDate(date);
    // Rows that another month adds have the table's default height.
    m_ui->calendarView->resizeRowsToContents();
    emit dateChanged(date);
}

void CalendarMonthWidget::clearDays()
{
    auto days = m_model->calendarDays();
    if (days.isEmpty())
        return;
    for (auto &day : days)
        day.clear();
    m_model->setCalendarDays(days);
}
