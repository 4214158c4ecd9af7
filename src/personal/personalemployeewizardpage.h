#pragma once

#include "tqwizardpage.h"

#include <QSet>

#include <memory>

class ObjectTreeProxy;
class QKeyEvent;

namespace Ui {
class PersonalEmployeeWizardPage;
}

/// The choice of an employee in the tree of the organisation.
class PersonalEmployeeWizardPage final : public TQWizardPage
{
    Q_OBJECT

public:
    explicit PersonalEmployeeWizardPage(QWidget *parent = nullptr);
    ~PersonalEmployeeWizardPage() override;

    /// The chosen employee; 0: none.
    [[nodiscard]] quint32 employeeId() const;
    [[nodiscard]] bool isComplete() const override;

public slots:
    void startSearch();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void initModel();
    void initView();
    void openTree();
    void deselectRemoved(const QModelIndex &parent, int first, int last);
    [[nodiscard]] bool handleSearchKey(const QKeyEvent &event);
    [[nodiscard]] bool handleTreeKey(QKeyEvent *event);
    void chooseFirstEmployee();
    void rememberExpanded(const QModelIndex &parent);
    void restoreExpanded(const QModelIndex &parent);
    void showSelection();
    void updateHint();

    std::unique_ptr<Ui::PersonalEmployeeWizardPage> m_ui;
    ObjectTreeProxy *const m_proxy;
    bool m_searching = false;
    QSet<quint32> m_expanded; ///< units that were expanded before the search
};
