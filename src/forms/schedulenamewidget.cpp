#include "schedulenamewidget.h"

#include "emptytextvalidator.h"
#include "ui_schedulenamewidget.h"

#include <QColorDialog>
#include <QPainter>
#include <QPointer>

ScheduleNameWidget::ScheduleNameWidget(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ScheduleNameWidget>())
    , m_color(palette().color(QPalette::Base))
{
    m_ui->setupUi(this);
    setFocusProxy(m_ui->leScheduleName);
    m_ui->leScheduleName->setValidator(new EmptyTextValidator(m_ui->leScheduleName));
    m_ui->leScheduleName->setEmptyTextAllowed(false);
    m_ui->leScheduleName->highlightValidation(true);
    // The button follows an enlarged font.
    const int side = qMax(16, fontMetrics().height());
    m_ui->tbColor->setIconSize(QSize(side, side));
    updateIcon();
    connect(m_ui->leScheduleName, &QLineEdit::textChanged, this, &ScheduleNameWidget::nameChanged);
    connect(m_ui->tbColor, &QToolButton::clicked, this, &ScheduleNameWidget::slotSelectColor);
}

ScheduleNameWidget::~ScheduleNameWidget() = default;

void ScheduleNameWidget::setName(const QString &name)
{
    m_ui->leScheduleName->setText(name);
}

QString ScheduleNameWidget::name() const
{
    return m_ui->leScheduleName->text();
}

void ScheduleNameWidget::setEnabledName(bool enabled)
{
    m_ui->leScheduleName->setEnabled(enabled);
}

void ScheduleNameWidget::selectName()
{
    m_ui->leScheduleName->selectAll();
}

QColor ScheduleNameWidget::color() const
{
    return m_color;
}

QString ScheduleNameWidget::colorName() const
{
    return m_color.isValid() ? m_color.name() : QString();
}

void ScheduleNameWidget::setColor(const QColor &color)
{
    m_color = color;
    updateIcon();
}

void ScheduleNameWidget::setColorName(const QString &name)
{
    setColor(QColor::isValidColor(name) ? QColor(name) : QColor());
}

QIcon ScheduleNameWidget::iconByColor(const QColor &color) const
{
    constexpr int Side = 16;
    QPixmap pixmap(Side, Side);
    pixmap.fill(color.isValid() ? color : palette().color(QPalette::Base));
    QPainter painter(&pixmap);
    painter.setPen(Qt::black);
    painter.drawRect(0, 0, Side - 1, Side - 1);
    painter.end();
    return pixmap;
}

void ScheduleNameWidget::slotSelectColor()
{
    // The form may be destroyed while the dialog is open, and the dialog with it.
    const QPointer<QColorDialog> dialog = new QColorDialog(m_color, this);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    dialog->deleteLater();
    if (accepted) {
        m_color = dialog->selectedColor();
        emit colorChanged(m_color.name());
    }
    updateIcon();
}

void ScheduleNameWidget::updateIcon()
{
    m_ui->tbColor->setIcon(iconByColor(m_color));
}
