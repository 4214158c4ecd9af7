#pragma once

#include "tqwidgets_export.h"

#include <QList>
#include <QString>
#include <QWizard>

/// A wizard with the list of its steps beside the pages: which are done, which is shown, which are to come.
///
/// The steps stand in the order of the page identifiers. The list only tells; one moves with the wizard's buttons.
/// Where font and pages leave no room for the steps' names on the screen, it shows their numbers alone. A window that
/// grows with a page is kept on the screen.
class TQWIDGETS_EXPORT PageListWizard : public QWizard
{
    Q_OBJECT

public:
    enum StepState
    {
        StepToCome,
        StepCurrent,
        StepDone
    };
    /// Role of a step's `StepState` in the list, whose object name is "pageList".
    static constexpr int StepStateRole = Qt::UserRole + 1;

    explicit PageListWizard(QWidget *parent = nullptr);

    /// Shows the pages \a ids as one step called \a title, at the place of the first of them. Meant for pages of which
    /// a user sees one; a page belongs to the first group that names it.
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

    void nameButtons();
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
