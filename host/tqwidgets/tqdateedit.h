#pragma once

#include "tqwidgets_export.h"

#include <QDateEdit>

/// A field for a date in the format "dd.MM.yyyy" with a calendar pop-up. It ignores the wheel unless it has the focus.
class TQWIDGETS_EXPORT TQDateEdit : public QDateEdit
{
    Q_OBJECT

public:
    explicit TQDateEdit(QWidget *parent = nullptr);
};
