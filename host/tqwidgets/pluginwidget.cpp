#include "pluginwidget.h"

PluginWidget::PluginWidget(QWidget *parent)
    : QMainWindow(parent)
{
    // A main window would be a separate window even with a parent.
    if (parent)
        setWindowFlags(Qt::Widget);
}

PluginWidget::~PluginWidget() = default;

bool PluginWidget::canShow() const
{
    return true;
}

QString PluginWidget::defaultHelpContext() const
{
    return {};
}

void PluginWidget::activated() { }

void PluginWidget::onTabActivated(int index)
{
    Q_UNUSED(index)
}

QList<PLUGIN_TAB> PluginWidget::tabList() const
{
    return {};
}

void PluginWidget::insertedToInterface() { }

void PluginWidget::showPopupCriticalMessage(const QString &text, int timeout)
{
    emit popupCriticalMessageRequested(text, timeout);
}
