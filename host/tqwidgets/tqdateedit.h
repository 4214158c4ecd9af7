#pragma once

#include "tqwidgets_export.h"

#include <QDateEdit>

/// The client's field for a date, shown as "dd.MM.yyyy", with a calendar to pick from. It ignores the wheel unless it
/// has the focus.
class TQWIDGETS_EXPORT TQDateEdit : public QDateEdit
{
    Q_OBJECT

public:
    explicit TQDateEdit(QWidget *parent = nullptr);
};
