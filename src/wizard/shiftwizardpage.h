#pragma once

#include "parameterswizardpage.h"

#include <QDate>
#include <QList>

#include <memory>

class QTableWidgetItem;

namespace Ui {
class ShiftWizardPage;
}

/// The parameters of a shift schedule: the days of the cycle and its start date.
class ShiftWizardPage final : public ParametersWizardPage
{
    Q_OBJECT

public:
    /// One day of the cycle; times in seconds from midnight, 0 for a day off.
    struct Shift
    {
        qint32 begin = 0;
        qint32 end = 0;
        qint32 breakBegin = 0;
        qint32 breakEnd = 0;
        bool dayOff = false;
    };

    explicit ShiftWizardPage(QWidget *parent = nullptr);
    ~ShiftWizardPage() override;

    /// The start date of the cycle; null if it differs for each employee.
    [[nodiscard]] QDate dateStart() const;
    [[nodiscard]] QList<Shift> shifts() const;

signals:
    void createShiftSchedule();

protected:
    void requestSchedule() override;
    void fitToFont() override;

private slots:
    void on_sbPeriod_valueChanged(int days);
    void on_tbAddShift_clicked();
    void on_tbDelShift_clicked();
    void on_twSchedule_itemChanged(QTableWidgetItem *item);

private:
    void initTable();
    void addEmptyRow();
    void delRow();
    void updatePeriod();

    std::unique_ptr<Ui::ShiftWizardPage> m_ui;
};
