#pragma once

#include "tqwidgets_export.h"

#include <QDateTimeEdit>

/// A field for a date and time or, by its display format, a time of day. It ignores the wheel unless it has the focus.
class TQWIDGETS_EXPORT TQDateTimeEdit : public QDateTimeEdit
{
    Q_OBJECT

public:
    explicit TQDateTimeEdit(QWidget *parent = nullptr);
};
