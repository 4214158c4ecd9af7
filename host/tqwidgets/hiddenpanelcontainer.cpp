#include "hiddenpanelcontainer.h"

#include "hiddenpanel.h"
#include "settings.h"

#include <QEvent>
#include <QMainWindow>
#include <QSplitter>
#include <QToolButton>

namespace {

constexpr int HandleWidth = 18;
// The width of a panel that has never been resized, in average characters and as a maximum share of the splitter.
constexpr int DefaultCharacters = 50;
constexpr qreal DefaultShare = 0.4;

} // namespace

HiddenPanelContainer::HiddenPanelContainer(QWidget *parent)
    : QWidget(parent)
    , m_handle(new QToolButton(this))
{
    setContentsMargins(HandleWidth, 0, 0, 0);
    m_handle->setObjectName(QStringLiteral("panelHandle"));
    m_handle->setAutoRaise(true);
    m_handle->setFocusPolicy(Qt::StrongFocus);
    m_handle->setIconSize({HandleWidth - 4, HandleWidth - 4});
    connect(m_handle, &QToolButton::clicked, this, [this] { setCollapsed(!m_collapsed); });
    updateHandle();
}

bool HiddenPanelContainer::isCollapsed() const
{
    return m_collapsed;
}

void HiddenPanelContainer::setCollapsed(bool collapsed)
{
    if (collapsed == m_collapsed)
        return;
    if (collapsed)
        saveWidth();
    Settings::instance()->setValue(settingsKey(QStringLiteral("collapsed")), collapsed);
    applyCollapsed(collapsed);
}

void HiddenPanelContainer::applyCollapsed(bool collapsed)
{
    m_collapsed = collapsed;
    if (auto *content = panel())
        content->setVisible(!collapsed);
    setMaximumWidth(collapsed ? HandleWidth : QWIDGETSIZE_MAX);
    updateHandle();
    applyWidth(collapsed ? HandleWidth : m_width);
    emit collapsedChanged(collapsed);
}

bool HiddenPanelContainer::event(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange)
        updateHandle();
    return QWidget::event(event);
}

void HiddenPanelContainer::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_handle->setGeometry(0, 0, HandleWidth, height());
}

void HiddenPanelContainer::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    restore();
}

void HiddenPanelContainer::hideEvent(QHideEvent *event)
{
    saveWidth();
    QWidget::hideEvent(event);
}

HiddenPanel *HiddenPanelContainer::panel() const
{
    return findChild<HiddenPanel *>(QString(), Qt::FindDirectChildrenOnly);
}

QSplitter *HiddenPanelContainer::splitter() const
{
    return qobject_cast<QSplitter *>(parentWidget());
}

QString HiddenPanelContainer::settingsKey(const QString &name) const
{
    const QWidget *page = parentWidget();
    while (page && !qobject_cast<const QMainWindow *>(page))
        page = page->parentWidget();
    return QStringLiteral("panels/%1.%2/%3").arg(page ? page->objectName() : QString(), objectName(), name);
}

void HiddenPanelContainer::restore()
{
    if (m_restored)
        return;
    m_restored = true;
    const auto *settings = Settings::instance();
    m_width = settings->value(settingsKey(QStringLiteral("width")), 0).toInt();
    if (auto *outer = splitter()) {
        outer->setCollapsible(outer->indexOf(this), false);
        // The additional width of a larger window goes to the neighbour.
        for (int i = 0; i < outer->count(); ++i)
            outer->setStretchFactor(i, outer->widget(i) == this ? 0 : 1);
    }
    if (settings->value(settingsKey(QStringLiteral("collapsed")), m_collapsed).toBool())
        applyCollapsed(true);
    else
        applyWidth(m_width);
    if (const auto *content = panel()) {
        connect(content, &HiddenPanel::titleChanged, this, &HiddenPanelContainer::updateHandle);
        updateHandle();
    }
}

void HiddenPanelContainer::saveWidth()
{
    if (m_collapsed || !m_restored || width() <= HandleWidth)
        return;
    m_width = width();
    Settings::instance()->setValue(settingsKey(QStringLiteral("width")), m_width);
}

void HiddenPanelContainer::applyWidth(int width)
{
    auto *outer = splitter();
    if (!outer || outer->count() < 2)
        return;
    QList<int> sizes = outer->sizes();
    const int index = outer->indexOf(this);
    const int neighbour = index > 0 ? index - 1 : index + 1;
    const int sum = sizes.at(index) + sizes.at(neighbour);
    // A width that was saved in a larger window leaves at least a quarter to the neighbour.
    const int defaultWidth =
        qMin(HandleWidth + fontMetrics().averageCharWidth() * DefaultCharacters, int(sum * DefaultShare));
    sizes[index] = qBound(HandleWidth, width > 0 ? width : defaultWidth, qMax(HandleWidth, sum * 3 / 4));
    sizes[neighbour] = sum - sizes.at(index);
    outer->setSizes(sizes);
}

void HiddenPanelContainer::updateHandle()
{
    m_handle->setIcon(
        QIcon::fromTheme(m_collapsed ? QStringLiteral("panel-expand") : QStringLiteral("panel-collapse")));
    const auto *content = panel();
    const QString title = content ? content->title() : QString();
    m_handle->setToolTip((m_collapsed ? tr("Показать панель «%1»") : tr("Скрыть панель «%1»")).arg(title));
    m_handle->setAccessibleName(m_handle->toolTip());
}
