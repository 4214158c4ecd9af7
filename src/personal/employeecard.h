#pragma once

#include <QString>
#include <QWidget>

#include <memory>

namespace Ui {
class EmployeeCard;
}

/// Shows the employee of a personal schedule: photo, name, personnel number and main schedule. Follows the local
/// storage.
class EmployeeCard final : public QWidget
{
    Q_OBJECT

public:
    explicit EmployeeCard(QWidget *parent = nullptr);
    ~EmployeeCard() override;

    /// Shows the employee and requests the photo.
    void setEmployee(quint32 id);
    [[nodiscard]] quint32 employeeId() const { return m_employeeId; }
    /// Whether the local storage has the employee, in any state.
    [[nodiscard]] bool isKnown() const;
    [[nodiscard]] QString employeeName() const;
    /// A warning below the employee's data; empty for none. The card replaces it when the employee is deleted.
    void setNotice(const QString &text);

signals:
    /// The photo in the local storage may be out of date. Not emitted during `setEmployee`.
    void photoRequest(quint32 employeeId);
    /// The employee's data may have changed.
    void employeeChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    void connectStorage();
    void refresh();
    void updateNotice();
    void fitHeight();
    void updatePhoto();
    void requestPhoto();

    std::unique_ptr<Ui::EmployeeCard> m_ui;
    quint32 m_employeeId = 0;
    quint32 m_mainScheduleId = 0;
    QString m_notice;
};
