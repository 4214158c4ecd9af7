#include "fixedwizardpage.h"

#include "ui_fixedwizardpage.h"

FixedWizardPage::FixedWizardPage(QWidget *parent)
    : ParametersWizardPage(parent)
    , m_ui(std::make_unique<Ui::FixedWizardPage>())
{
    m_ui->setupUi(this);
    setNameWidget(m_ui->nameWidget);
    m_ui->lwDays->setWrapping(true);
}

FixedWizardPage::~FixedWizardPage() = default;

QTime FixedWizardPage::shiftBeg() const
{
    return m_ui->deShiftBeg->time();
}

QTime FixedWizardPage::shiftEnd() const
{
    return m_ui->deShiftEnd->time();
}

bool FixedWizardPage::hasBreak() const
{
    return m_ui->gbBreak->isChecked();
}

QTime FixedWizardPage::breakBeg() const
{
    return m_ui->deBreakBeg->time();
}

QTime FixedWizardPage::breakEnd() const
{
    return m_ui->deBreakEnd->time();
}

bool FixedWizardPage::isSubLastHour() const
{
    return m_ui->cbSubLastHour->isChecked();
}

QList<bool> FixedWizardPage::workdays() const
{
    QList<bool> days;
    for (int row = 0; row < m_ui->lwDays->count(); ++row)
        days.append(m_ui->lwDays->item(row)->checkState() == Qt::Checked);
    return days;
}

void FixedWizardPage::requestSchedule()
{
    emit createFixedSchedule();
}

void FixedWizardPage::fitToFont()
{
    // The form's minimum width is too small for a large font.
    for (auto *time : {m_ui->deShiftBeg, m_ui->deShiftEnd, m_ui->deBreakBeg, m_ui->deBreakEnd})
        time->setMinimumWidth(qMax(time->minimumWidth(), time->minimumSizeHint().width()));
    // The height of the list is limited, so the days wrap into columns and all are visible in any font.
    constexpr int MaximumRows = 4;
    QListWidget *list = m_ui->lwDays;
    list->ensurePolished();
    // The view needs one pixel below the last row.
    const int frame = 2 * list->frameWidth() + 1;
    const QSize day(list->sizeHintForColumn(0) + fontMetrics().averageCharWidth(), list->sizeHintForRow(0));
    const int rows = qBound(1, (list->maximumHeight() - frame) / day.height(), MaximumRows);
    const int columns = (list->count() + rows - 1) / rows;
    list->setGridSize(day);
    list->setMinimumSize(columns * day.width() + frame, rows * day.height() + frame);
}
