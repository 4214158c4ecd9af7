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

    /// The name of this page in the page list; empty unless overridden: then the list shows the title.
    [[nodiscard]] virtual QString pageListText() const;
};
