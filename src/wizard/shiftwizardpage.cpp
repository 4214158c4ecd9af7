#include "shiftwizardpage.h"

#include "CheckBoxDelegate.h"
#include "datetimedelegate.h"
#include "fieldguards.h"
#include "ui_shiftwizardpage.h"

namespace {

enum Column
{
    BeginColumn,
    EndColumn,
    BreakBeginColumn,
    BreakEndColumn,
    DayOffColumn,
    ColumnCount
};

} // namespace

ShiftWizardPage::ShiftWizardPage(QWidget *parent)
    : ParametersWizardPage(parent)
    , m_ui(std::make_unique<Ui::ShiftWizardPage>())
{
    m_ui->setupUi(this);
    setNameWidget(m_ui->nameWidget);
    commitOnReturn(m_ui->sbPeriod);
    connect(m_ui->rbCalendar, &QRadioButton::toggled, m_ui->deDateStart, &QWidget::setEnabled);
    m_ui->deDateStart->setDate(QDate::currentDate());
    initTable();
}

ShiftWizardPage::~ShiftWizardPage() = default;

QDate ShiftWizardPage::dateStart() const
{
    return m_ui->rbCalendar->isChecked() ? m_ui->deDateStart->date() : QDate();
}

QList<ShiftWizardPage::Shift> ShiftWizardPage::shifts() const
{
    const auto value = [this](int row, int column) { return m_ui->twSchedule->item(row, column)->data(Qt::EditRole); };
    QList<Shift> shifts;
    for (int row = 0; row < m_ui->twSchedule->rowCount(); ++row) {
        Shift shift;
        shift.dayOff = value(row, DayOffColumn).toBool();
        if (!shift.dayOff) {
            shift.begin = value(row, BeginColumn).toInt();
            shift.end = value(row, EndColumn).toInt();
            shift.breakBegin = value(row, BreakBeginColumn).toInt();
            shift.breakEnd = value(row, BreakEndColumn).toInt();
        }
        shifts.append(shift);
    }
    return shifts;
}

void ShiftWizardPage::requestSchedule()
{
    emit createShiftSchedule();
}

void ShiftWizardPage::fitToFont()
{
    // All columns are as wide as the widest caption.
    auto *header = m_ui->twSchedule->horizontalHeader();
    int caption = 0;
    for (int column = 0; column < ColumnCount; ++column)
        caption = qMax(caption, header->sectionSizeHint(column));
    const int rowNumbers = m_ui->twSchedule->verticalHeader()->sizeHint().width();
    m_ui->twSchedule->setMinimumWidth(ColumnCount * caption + rowNumbers + 2 * m_ui->twSchedule->frameWidth());
}

void ShiftWizardPage::on_sbPeriod_valueChanged(int days)
{
    if (m_ui->twSchedule->rowCount() > days)
        m_ui->twSchedule->setRowCount(days);
    while (m_ui->twSchedule->rowCount() < days)
        addEmptyRow();
    updatePeriod();
}

void ShiftWizardPage::on_tbAddShift_clicked()
{
    addEmptyRow();
}

void ShiftWizardPage::on_tbDelShift_clicked()
{
    delRow();
}

void ShiftWizardPage::on_twSchedule_itemChanged(QTableWidgetItem *item)
{
    if (item->column() != DayOffColumn)
        return;
    const bool dayOff = item->data(Qt::EditRole).toBool();
    for (int column = BeginColumn; column <= BreakEndColumn; ++column) {
        auto *time = m_ui->twSchedule->item(item->row(), column);
        time->setFlags(dayOff ? time->flags() & ~Qt::ItemIsEnabled : time->flags() | Qt::ItemIsEnabled);
    }
}

void ShiftWizardPage::initTable()
{
    m_ui->twSchedule->setHorizontalHeaderLabels(
        {tr("Начало\nсмены"), tr("Окончание\nсмены"), tr("Начало\nобеда"), tr("Окончание\nобеда"), tr("Выходной")});
    m_ui->twSchedule->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    addEmptyRow();
    auto *times = new DateTimeDelegate(this);
    times->setTimeSpec(QStringLiteral("hh:mm"));
    m_ui->twSchedule->setItemDelegate(times);
    m_ui->twSchedule->setItemDelegateForColumn(DayOffColumn, new CheckBoxDelegate(this));
}

void ShiftWizardPage::addEmptyRow()
{
    const int row = m_ui->twSchedule->rowCount();
    if (row >= m_ui->sbPeriod->maximum())
        return;
    m_ui->twSchedule->insertRow(row);
    // The day-off cell is set last: its change handler reads the others.
    for (int column = BeginColumn; column < ColumnCount; ++column) {
        auto *item = new QTableWidgetItem;
        item->setData(Qt::EditRole, column == DayOffColumn ? QVariant(false) : QVariant(0));
        m_ui->twSchedule->setItem(row, column, item);
    }
    updatePeriod();
}

void ShiftWizardPage::delRow()
{
    if (m_ui->twSchedule->rowCount() < 2)
        return;
    m_ui->twSchedule->removeRow(m_ui->twSchedule->currentRow());
    updatePeriod();
}

void ShiftWizardPage::updatePeriod()
{
    const int days = m_ui->twSchedule->rowCount();
    m_ui->sbPeriod->setValue(days);
    m_ui->tbAddShift->setEnabled(days < m_ui->sbPeriod->maximum());
    m_ui->tbDelShift->setEnabled(days > 1);
}
