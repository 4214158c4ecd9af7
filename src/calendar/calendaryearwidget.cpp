#include "calendaryearwidget.h"

#include "calendardayitemdelegate.h"
#include "calendaryearmodel.h"
#include "fieldguards.h"
#include "scheduleutil.h"
#include "settings.h"
#include "ui_calendaryearwidget.h"

#include <QHeaderView>
#include <QMenu>

namespace {

const auto ShowDowKey = QStringLiteral("scheduleview/calendar_show_dow");
const auto ScaleKey = QStringLiteral("scheduleview/calendar_scale");
constexpr int DefaultScale = 4;

void saveSetting(const QString &key, const QVariant &value)
{
    Settings::instance()->setValue(key, value);
    Settings::instance()->sync();
}

} // namespace

CalendarYearWidget::CalendarYearWidget(QWidget *parent)
    : CalendarWidget(parent)
    , m_ui(std::make_unique<Ui::CalendarYearWidget>())
    , m_model(new CalendarYearModel(this))
    , m_delegate(new CalendarDayItemDelegate(this))
{
    m_ui->setupUi(this);
    m_ui->sbYear->setValue(QDate::currentDate().year());
    commitOnReturn(m_ui->sbYear);
    const auto settings = Settings::instance();
    m_ui->cbShowDayOfWeek->setChecked(settings->value(ShowDowKey, false).toBool());
    m_ui->hsScale->setValue(settings->value(ScaleKey, DefaultScale).toInt());

    connect(m_ui->sbYear, qOverload<int>(&QSpinBox::valueChanged), this, &CalendarYearWidget::setYear);
    connect(m_ui->sbYear, qOverload<int>(&QSpinBox::valueChanged), this, &CalendarYearWidget::yearChanged);
    m_delegate->setShowDow(m_ui->cbShowDayOfWeek->isChecked());
    connect(m_ui->cbShowDayOfWeek, &QCheckBox::toggled, this, &CalendarYearWidget::setShowDows);
    m_model->setYear(m_ui->sbYear->value());
    setCalendar(m_ui->calendarView, m_model);
    initTable();
    connect(m_ui->hsScale, &QSlider::valueChanged, this, &CalendarYearWidget::setScale);
    setScale(m_ui->hsScale->value());
}

CalendarYearWidget::~CalendarYearWidget() = default;

void CalendarYearWidget::initTable()
{
    const auto header = m_ui->calendarView->horizontalHeader();
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const bool isDay = column >= CalendarYearModel::FirstDayColumn;
        header->setSectionResizeMode(column, isDay ? QHeaderView::Fixed : QHeaderView::ResizeToContents);
        if (isDay)
            m_ui->calendarView->setItemDelegateForColumn(column, m_delegate);
    }
}

int CalendarYearWidget::year() const
{
    return m_ui->sbYear->value();
}

void CalendarYearWidget::setYear(int year)
{
    m_model->setYear(year);
}

void CalendarYearWidget::setShowDows(bool show)
{
    m_delegate->setShowDow(show);
    m_model->updateDays();
    saveSetting(ShowDowKey, show);
}

void CalendarYearWidget::setScale(int scale)
{
    m_delegate->setScale(scale);
    m_ui->calendarView->resizeColumnsToContents();
    m_ui->calendarView->resizeRowsToContents();
    saveSetting(ScaleKey, scale);
}

void CalendarYearWidget::addPeriods(QMenu *menu)
{
    CalendarWidget::addPeriods(menu);
    connect(menu->addAction(tr("До конца года")), &QAction::triggered, this, &CalendarYearWidget::applyYearPeriodic);
}

void CalendarYearWidget::applyYearPeriodic()
{
    repeatSelection(&ScheduleUtil::lastOfYear);
}
