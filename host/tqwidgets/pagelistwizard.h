#pragma once

#include "tqwidgets_export.h"

#include <QList>
#include <QString>
#include <QWizard>

/// A wizard with a list of its steps beside the pages, in the order of the page identifiers.
///
/// The list is for display only; the operator moves with the wizard's buttons. If the screen is too small for the names
/// of the steps, the list shows only their numbers. A window that grows with a page is kept on the screen.
class TQWIDGETS_EXPORT PageListWizard : public QWizard
{
    Q_OBJECT

public:
    enum StepState
    {
        StepPending,
        StepCurrent,
        StepDone
    };
    /// Role of the `StepState` in the list, which has the object name "pageList".
    static constexpr int StepStateRole = Qt::UserRole + 1;

    explicit PageListWizard(QWidget *parent = nullptr);

    /// Shows the pages \a ids as one step \a title, at the position of the first of them. For pages of which the
    /// operator sees only one. A page belongs to the first group that contains it.
    void addPageGroup(const QString &title, const QList<int> &ids);

    /// Hidden at first.
    [[nodiscard]] bool isPageListVisible() const;
    void setPageListVisible(bool visible);

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    class StepList;
    struct Step
    {
        QString title;
        QList<int> ids;
    };

    void translateTexts();
    [[nodiscard]] QString pageText(int id) const;
    [[nodiscard]] int groupOf(int id) const;
    [[nodiscard]] QList<Step> steps() const;
    [[nodiscard]] StepState stepState(const Step &step) const;
    void updatePageList();
    void fitPageList();
    void keepOnScreen();

    QList<Step> m_groups;
    StepList *m_list = nullptr;
};
