#pragma once

#include <QString>
#include <QWidget>

#include <memory>

namespace Ui {
class EmployeeCard;
}

/// The employee whose personal schedule is made or edited: photo, name, personnel number and main schedule, as the
/// local storage holds them now.
class EmployeeCard final : public QWidget
{
    Q_OBJECT

public:
    explicit EmployeeCard(QWidget *parent = nullptr);
    ~EmployeeCard() override;

    /// Shows the employee and asks for the photo.
    void setEmployee(quint32 id);
    [[nodiscard]] quint32 employee() const { return m_employee; }
    /// Whether the local storage holds the employee, in use or not.
    [[nodiscard]] bool isKnown() const;
    [[nodiscard]] QString employeeName() const;
    /// A warning below the employee's data; empty for none. That the employee is gone is said by itself, before all
    /// else.
    void setNotice(const QString &text);

signals:
    /// The photo in the local storage is to be brought up to date. Never emitted from inside `setEmployee`.
    void photoRequest(quint32 employee);
    /// What is shown of the employee may differ from before.
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
    quint32 m_employee = 0;
    quint32 m_mainSchedule = 0;
    QString m_notice;
};
