#include "fittedscrollarea.h"

#include <QEvent>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

// What a window needs of the screen beside its middle: its frame, a title, a row of buttons and their margins.
constexpr QSize Frame(24, 48);
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
    const QSize room = screen()->availableSize() - Frame - around;
    const int bar = wanted.height() > room.height() ? verticalScrollBar()->sizeHint().width() : 0;
    return (wanted + QSize(bar, 0)).boundedTo(room);
}

void FittedScrollArea::showEvent(QShowEvent *event)
{
    // The area fills its own ground only where the window's style would, else the page shines through.
    if (widget())
        widget()->setAutoFillBackground(false);
    QScrollArea::showEvent(event);
}

bool FittedScrollArea::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
