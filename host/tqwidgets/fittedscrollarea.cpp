#include "fittedscrollarea.h"

#include "fieldguards.h"
#include "screenroom.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace {

// What stands in a window around its middle: a title, a row of buttons and their margins.
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
    // The base class follows only a Tab that begins inside.
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
    const QSize room = screenRoom(*window()) - around;
    const int bar = wanted.height() > room.height() ? verticalScrollBar()->sizeHint().width() : 0;
    return (wanted + QSize(bar, 0)).boundedTo(room);
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
    // Where one scrolls with the wheel, it must not change what it happens to pass.
    for (auto *box : widget()->findChildren<QAbstractSpinBox *>())
        guardWheel(box);
    for (auto *box : widget()->findChildren<QComboBox *>())
        guardWheel(box);
}

bool FittedScrollArea::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
