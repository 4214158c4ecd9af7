#include "panelinfowidget.h"

#include "ui_panelinfowidget.h"

PanelInfoWidget::PanelInfoWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::PanelInfoWidget>())
{
    m_ui->setupUi(this);
}

PanelInfoWidget::~PanelInfoWidget() = default;

void PanelInfoWidget::clear()
{
    m_schedule = {};
    m_ui->textEdit->clear();
}

void PanelInfoWidget::updateInfo(int count)
{
    clear();
    m_ui->textEdit->setPlainText(tr("Выбрано графиков работ: %1").arg(count));
}

void PanelInfoWidget::updateInfo(const orvex::SCHEDULE_DATA &schedule)
{
    m_schedule = schedule;
    m_ui->textEdit->clear();
}
