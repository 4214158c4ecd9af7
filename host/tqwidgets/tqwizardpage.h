#pragma once

#include "tqwidgets_export.h"

#include <QString>
#include <QWizardPage>

/// A page of a `PageListWizard`.
class TQWIDGETS_EXPORT TQWizardPage : public QWizardPage
{
    Q_OBJECT

public:
    explicit TQWizardPage(QWidget *parent = nullptr);

    /// What the page list calls this page; the page's title while this is empty, as it is unless overridden.
    [[nodiscard]] virtual QString pageListText() const;
};
