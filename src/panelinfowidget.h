#pragma once

#include "schedules.h"

#include <QWidget>

#include <memory>

namespace Ui {
class PanelInfoWidget;
}

/// The panel beside the list that tells about the selection.
class PanelInfoWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PanelInfoWidget(QWidget *parent = nullptr);
    ~PanelInfoWidget() override;

    void clear();
    /// Several schedules are selected.
    void updateInfo(int count);
    /// One schedule is selected.
    void updateInfo(const orvex::SCHEDULE_DATA &schedule);

private:
    std::unique_ptr<Ui::PanelInfoWidget> m_ui;
    orvex::SCHEDULE_DATA m_schedule;
};
