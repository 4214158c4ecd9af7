#include "fittedscrollarea.h"

#include "availablewindowsize.h"
#include "fieldguards.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace {

// The rest of a window: a title, a row of buttons and their margins.
constexpr int LinesAround = 7;
constexpr int LettersBeside = 11;

} // namespace

FittedScrollArea::FittedScrollArea(QWidget *parent)
    : QScrollArea(parent)
{
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    // The base class scrolls only to a widget that is reached by Tab from inside.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *, QWidget *now) {
        if (now && widget() && widget()->isAncestorOf(now))
            ensureWidgetVisible(now, 0, 0);
    });
}

void FittedScrollArea::wrapContents(QWidget *window)
{
    if (!window->layout())
        return;
    auto *area = new FittedScrollArea(window);
    auto *contents = new QWidget(area);
    contents->setLayout(window->layout());
    area->setWidget(contents);
    auto *layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(area);
}

QSize FittedScrollArea::sizeHint() const
{
    return widget() ? widget()->sizeHint().expandedTo(minimumSizeHint()) : QScrollArea::sizeHint();
}

QSize FittedScrollArea::minimumSizeHint() const
{
    if (!widget())
        return QScrollArea::minimumSizeHint();
    const QSize wanted = widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
    const QSize letter(fontMetrics().averageCharWidth(), fontMetrics().lineSpacing());
    const QSize around(LettersBeside * letter.width(), LinesAround * letter.height());
    const QSize available = availableWindowSize(*window()) - around;
    const int bar = wanted.height() > available.height() ? verticalScrollBar()->sizeHint().width() : 0;
    return (wanted + QSize(bar, 0)).boundedTo(available);
}

void FittedScrollArea::showEvent(QShowEvent *event)
{
    if (widget())
        prepareContents();
    QScrollArea::showEvent(event);
}

void FittedScrollArea::prepareContents()
{
    widget()->setAutoFillBackground(false);
    if (std::exchange(m_prepared, true))
        return;
    // Scrolling with the wheel must not change the fields under the pointer.
    for (auto *box : widget()->findChildren<QAbstractSpinBox *>())
        ignoreWheelWithoutFocus(box);
    for (auto *box : widget()->findChildren<QComboBox *>())
        ignoreWheelWithoutFocus(box);
}

bool FittedScrollArea::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
