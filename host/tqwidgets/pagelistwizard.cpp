#include "pagelistwizard.h"

#include "availablewindowsize.h"
#include "fittedscrollarea.h"
#include "tqwizardpage.h"

#include <QEvent>
#include <QListWidget>
#include <QPainter>
#include <QScreen>
#include <QShowEvent>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

QFont currentFont(QFont font)
{
    font.setBold(true);
    return font;
}

/// The layout of a step, in proportion to the font.
struct StepGeometry
{
    explicit StepGeometry(const QFont &font)
        : unit(QFontMetrics(font).height())
        , badge(unit * 4 / 3)
        , padding(unit * 2 / 5)
        , metrics(currentFont(font))
    {
    }

    [[nodiscard]] QRect textBounds(const QString &text) const
    {
        return metrics.boundingRect(QRect(0, 0, metrics.averageCharWidth() * 18, unit * 10), Qt::TextWordWrap, text);
    }

    [[nodiscard]] QSize stepSize(const QString &text) const
    {
        const QSize bounds = textBounds(text).size();
        // One more pixel, so that a rounded width does not wrap the text.
        return {bounds.width() + 1 + badge + 3 * padding, std::max(bounds.height(), badge) + padding};
    }

    int unit;
    int badge;
    int padding;
    QFontMetrics metrics;
};

/// Draws a step: a badge with its number or a tick, and its text.
class StepDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return StepGeometry(option.font).stepSize(index.data().toString());
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const StepGeometry geometry(option.font);
        const auto state = static_cast<PageListWizard::StepState>(index.data(PageListWizard::StepStateRole).toInt());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (state == PageListWizard::StepCurrent)
            paintCurrentBackground(painter, option, geometry);
        QRect badge(0, 0, geometry.badge, geometry.badge);
        badge.moveCenter(option.rect.center());
        badge.moveLeft(option.rect.left() + geometry.padding);
        paintBadge(painter, badge, option, state, index.row() + 1);

        const bool current = state == PageListWizard::StepCurrent;
        const auto shownRole = current ? QPalette::HighlightedText : QPalette::Text;
        const auto role = state == PageListWizard::StepPending ? QPalette::PlaceholderText : shownRole;
        painter->setFont(current ? currentFont(option.font) : option.font);
        painter->setPen(option.palette.color(role));
        const QRect text = option.rect.adjusted(geometry.badge + 2 * geometry.padding, 0, -geometry.padding + 1, 0);
        if (text.width() >= geometry.unit)
            painter->drawText(text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextWordWrap, index.data().toString());
        painter->restore();
    }

private:
    static void paintCurrentBackground(QPainter *painter, const QStyleOptionViewItem &option,
                                       const StepGeometry &geometry)
    {
        painter->setPen(Qt::NoPen);
        painter->setBrush(option.palette.color(QPalette::Highlight));
        painter->drawRoundedRect(option.rect, geometry.padding / 2.0, geometry.padding / 2.0);
    }

    static void paintBadge(QPainter *painter, const QRect &badge, const QStyleOptionViewItem &option,
                           PageListWizard::StepState state, int number)
    {
        const qreal line = std::max(1.0, badge.width() / 16.0);
        const bool pending = state == PageListWizard::StepPending;
        // The colour of links has enough contrast in both themes.
        const QColor accent = option.palette.color(QPalette::Link);
        const QColor muted = option.palette.color(QPalette::PlaceholderText);
        painter->setPen(QPen(pending ? muted : accent, line));
        painter->setBrush(pending ? Qt::NoBrush : QBrush(accent));
        painter->drawEllipse(QRectF(badge).adjusted(line / 2, line / 2, -line / 2, -line / 2));
        painter->setPen(QPen(pending ? muted : option.palette.color(QPalette::Base), 2 * line, Qt::SolidLine,
                             Qt::RoundCap, Qt::RoundJoin));
        if (state != PageListWizard::StepDone) {
            painter->setFont(option.font);
            painter->drawText(badge, Qt::AlignCenter, QString::number(number));
            return;
        }
        const auto at = [&badge](qreal x, qreal y) {
            return QPointF(badge.x() + x * badge.width(), badge.y() + y * badge.height());
        };
        painter->setBrush(Qt::NoBrush);
        painter->drawPolyline(QVector<QPointF>{at(0.29, 0.52), at(0.44, 0.67), at(0.72, 0.36)});
    }
};

QString stateText(PageListWizard::StepState state)
{
    switch (state) {
    case PageListWizard::StepCurrent:
        return PageListWizard::tr("текущий шаг");
    case PageListWizard::StepDone:
        return PageListWizard::tr("шаг пройден");
    case PageListWizard::StepPending:
        break;
    }
    return PageListWizard::tr("шаг впереди");
}

} // namespace

/// As wide as its widest step, or only as wide as the badges.
class PageListWizard::StepList final : public QListWidget
{
public:
    explicit StepList(QWidget *parent)
        : QListWidget(parent)
    {
        setObjectName(QStringLiteral("pageList"));
        setItemDelegate(new StepDelegate(this));
        setSelectionMode(QAbstractItemView::NoSelection);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFrameShape(QFrame::NoFrame);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        viewport()->setAutoFillBackground(false);
    }

    [[nodiscard]] int fullWidth() const
    {
        const StepGeometry geometry(font());
        int width = 0;
        for (int row = 0; row < count(); ++row)
            width = std::max(width, geometry.stepSize(item(row)->text()).width());
        return width;
    }

    void setCompact(bool compact)
    {
        if (m_compact == compact)
            return;
        m_compact = compact;
        updateGeometry();
    }

    QSize sizeHint() const override
    {
        const StepGeometry geometry(font());
        return {m_compact ? geometry.badge + 2 * geometry.padding : fullWidth(), 0};
    }

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent *event) override
    {
        QListWidget::changeEvent(event);
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
            updateGeometry();
    }

private:
    bool m_compact = false;
};

PageListWizard::PageListWizard(QWidget *parent)
    : QWizard(parent)
    , m_list(new StepList(this))
{
    // The same layout on every desktop: the list at the left, the title above the page.
    setWizardStyle(ClassicStyle);
    m_list->hide();
    translateTexts();
    connect(this, &QWizard::pageAdded, this, [this](int id) { FittedScrollArea::wrapContents(page(id)); });
    connect(this, &QWizard::pageAdded, this, &PageListWizard::updatePageList);
    // Queued: the signal is emitted before the page is removed.
    connect(this, &QWizard::pageRemoved, this, &PageListWizard::updatePageList, Qt::QueuedConnection);
    connect(this, &QWizard::currentIdChanged, this, &PageListWizard::updatePageList);
    // Queued: the window grows with the page after the signal.
    connect(this, &QWizard::currentIdChanged, this, &PageListWizard::keepOnScreen, Qt::QueuedConnection);
}

void PageListWizard::addPageGroup(const QString &title, const QList<int> &ids)
{
    m_groups.append({title, ids});
    updatePageList();
}

bool PageListWizard::isPageListVisible() const
{
    return sideWidget() == m_list;
}

void PageListWizard::setPageListVisible(bool visible)
{
    if (visible == isPageListVisible())
        return;
    setSideWidget(visible ? m_list : nullptr);
    m_list->setVisible(visible);
}

void PageListWizard::changeEvent(QEvent *event)
{
    QWizard::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitPageList();
    if (event->type() != QEvent::LanguageChange)
        return;
    translateTexts();
    updatePageList();
}

void PageListWizard::showEvent(QShowEvent *event)
{
    fitPageList();
    // Qt limits the initial size of a window to two thirds of the screen.
    if (!event->spontaneous() && !testAttribute(Qt::WA_Resized))
        resize(sizeHint().boundedTo(availableWindowSize(*this)));
    QWizard::showEvent(event);
}

void PageListWizard::translateTexts()
{
    m_list->setAccessibleName(tr("Шаги"));
    setButtonText(BackButton, tr("&Назад"));
    setButtonText(NextButton, tr("&Далее"));
    setButtonText(FinishButton, tr("&Готово"));
    setButtonText(CancelButton, tr("&Отмена"));
}

QString PageListWizard::pageText(int id) const
{
    const auto *listed = qobject_cast<TQWizardPage *>(page(id));
    const QString text = listed ? listed->pageListText() : QString();
    return text.isEmpty() ? page(id)->title() : text;
}

int PageListWizard::groupOf(int id) const
{
    for (int i = 0; i < m_groups.size(); ++i) {
        if (m_groups.at(i).ids.contains(id))
            return i;
    }
    return -1;
}

QList<PageListWizard::Step> PageListWizard::steps() const
{
    QList<Step> steps;
    QList<int> shownGroups;
    for (const int id : pageIds()) {
        const int group = groupOf(id);
        if (group < 0) {
            steps.append({pageText(id), {id}});
        } else if (!shownGroups.contains(group)) {
            shownGroups.append(group);
            steps.append(m_groups.at(group));
        }
    }
    return steps;
}

PageListWizard::StepState PageListWizard::stepState(const Step &step) const
{
    if (step.ids.contains(currentId()))
        return StepCurrent;
    const QList<int> visited = visitedIds();
    const bool done = std::any_of(step.ids.cbegin(), step.ids.cend(), [&](int id) { return visited.contains(id); });
    return done ? StepDone : StepPending;
}

void PageListWizard::updatePageList()
{
    m_list->clear();
    for (const Step &step : steps()) {
        auto *item = new QListWidgetItem(step.title, m_list);
        const StepState state = stepState(step);
        item->setData(StepStateRole, state);
        item->setToolTip(step.title);
        item->setData(Qt::AccessibleTextRole, QStringLiteral("%1, %2").arg(step.title, stateText(state)));
        item->setFlags(Qt::ItemIsEnabled);
    }
    m_list->updateGeometry();
}

void PageListWizard::fitPageList()
{
    const int margins = 8 * style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, this);
    int widestPage = 0;
    for (const int id : pageIds()) {
        page(id)->ensurePolished();
        widestPage = std::max(widestPage, page(id)->minimumSizeHint().width());
    }
    m_list->setCompact(widestPage + m_list->fullWidth() + margins > screen()->availableSize().width());
}

void PageListWizard::keepOnScreen()
{
    if (!isVisible() || isMaximized() || isFullScreen())
        return;
    const QRect available = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    // A window that is too large keeps its title bar on the screen, so that it can be moved.
    move(qMax(available.left(), qMin(frame.left(), available.right() - frame.width() + 1)),
         qMax(available.top(), qMin(frame.top(), available.bottom() - frame.height() + 1)));
}
