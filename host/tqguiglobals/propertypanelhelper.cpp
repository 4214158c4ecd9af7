#include "propertypanelhelper.h"

#include "tqguiglobals.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// A decoder may need the whole picture in memory to scale it: 32 million pixels are 128 MB.
constexpr qint64 MaximumPhotoPixels = 32'000'000;
// The decoder blocks the GUI thread: it takes about a second for 40 MB.
constexpr int MaximumPhotoBytes = 10'000'000;

QTextCharFormat format(const QColor &colour, qreal scale = 1.0, QFont::Weight weight = QFont::Normal)
{
    QFont font = QGuiApplication::font();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * scale);
    else
        font.setPixelSize(int(std::lround(font.pixelSize() * scale)));
    font.setWeight(weight);
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(colour);
    return format;
}

QColor textColour()
{
    return QGuiApplication::palette().color(QPalette::Active, QPalette::Text);
}

QSize photoSize(const QString &photoType)
{
    return photoType == QLatin1String("PT_PHOTO_PREVIEW") ? QSize(96, 128) : QSize(240, 320);
}

QImage decodedPhoto(const QByteArray &data, const QSize &bound)
{
    static const QList<QByteArray> photoFormats = {"jpeg", "jpg", "png", "bmp", "gif", "webp", "tiff"};
    QBuffer buffer;
    buffer.setData(data);
    if (data.isEmpty() || data.size() > MaximumPhotoBytes || !buffer.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!photoFormats.contains(reader.format()) || size.isEmpty()
        || qint64(size.width()) * size.height() > MaximumPhotoPixels)
        return {};

    // The reader scales a picture before it applies the picture's own orientation.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize target = size.scaled(turned ? bound.transposed() : bound, Qt::KeepAspectRatio);
    reader.setScaledSize(target.expandedTo({1, 1}));
    return reader.read();
}

/// As `decodedPhoto`, with a cache of the last photos: a panel is printed several times for one selection, and decoding
/// a camera's photo takes longer than a frame.
QImage photoImage(const QByteArray &data, const QSize &bound)
{
    struct CachedPhoto
    {
        QByteArray data; ///< kept, so that no other photo gets the same address
        QSize bound;
        QImage image;
    };
    constexpr std::size_t CacheSize = 4;
    static std::vector<CachedPhoto> cache;
    const auto isSame = [&](const CachedPhoto &cached) {
        return cached.data.constData() == data.constData() && cached.data.size() == data.size()
            && cached.bound == bound;
    };
    const auto found = std::find_if(cache.begin(), cache.end(), isSame);
    if (found != cache.end()) {
        std::rotate(cache.begin(), found, found + 1);
        return cache.front().image;
    }
    if (cache.size() == CacheSize)
        cache.pop_back();
    cache.insert(cache.begin(), {data, bound, decodedPhoto(data, bound)});
    return cache.front().image;
}

QPixmap placeholder(const QSize &size, qreal ratio)
{
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(TQGuiGlobals::lineColor(), 1));
    painter.setBrush(QGuiApplication::palette().brush(QPalette::AlternateBase));
    const QRectF frame = QRectF(QPointF(), QSizeF(size)).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(frame, 4, 4);

    QPainterPath clip;
    clip.addRoundedRect(frame, 4, 4);
    painter.setClipPath(clip);
    painter.setPen(Qt::NoPen);
    painter.setBrush(TQGuiGlobals::lineColor());
    const qreal width = size.width();
    painter.drawEllipse(QPointF(width / 2, size.height() * 0.38), width * 0.19, width * 0.21);
    painter.drawEllipse(QPointF(width / 2, size.height() * 0.98), width * 0.36, width * 0.42);
    return pixmap;
}

} // namespace

QTextCharFormat PropertyPanelHelper::titleformat()
{
    return format(TQGuiGlobals::titleColor(), 0.92);
}

QTextCharFormat PropertyPanelHelper::textformat()
{
    return format(textColour());
}

QTextCharFormat PropertyPanelHelper::nameformat()
{
    return format(textColour(), 1.25, QFont::DemiBold);
}

QTextCharFormat PropertyPanelHelper::tableTitleFormat()
{
    return format(textColour(), 1.0, QFont::DemiBold);
}

QTextCharFormat PropertyPanelHelper::tableCellParamFormat()
{
    return format(TQGuiGlobals::titleColor(), 0.92);
}

QTextCharFormat PropertyPanelHelper::tableCellValueFormat()
{
    return format(textColour(), 0.92);
}

QTextTableFormat PropertyPanelHelper::tableFormat(Qt::Alignment alignment)
{
    QTextTableFormat format;
    format.setAlignment(alignment);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    format.setBorder(1);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(TQGuiGlobals::lineColor());
    // Cells overlap by their border. Collapsed borders take twice the time to lay out and to paint.
    format.setBorderCollapse(false);
    format.setCellSpacing(-1);
    format.setCellPadding(3);
    return format;
}

QPixmap PropertyPanelHelper::pixmapByPhotoType(const QByteArray &data, const QString &photoType)
{
    const QSize size = photoSize(photoType);
    const qreal ratio = qGuiApp->devicePixelRatio();
    const QImage photo = photoImage(data, size * ratio);
    if (photo.isNull())
        return placeholder(size, ratio);
    QPixmap pixmap = QPixmap::fromImage(photo);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QImage PropertyPanelHelper::createColoredText(const QString &text, const QColor &background, const QColor &foreground,
                                              const QFont &font, qreal devicePixelRatio)
{
    const qreal ratio = devicePixelRatio > 0 ? devicePixelRatio : qGuiApp->devicePixelRatio();
    const QFontMetricsF metrics(font);
    const qreal padding = metrics.height() * 0.4;
    const QSizeF size(std::ceil(metrics.horizontalAdvance(text) + 2 * padding), std::ceil(metrics.height() + 4));

    QImage image((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    const QRectF field({}, size);
    painter.drawRoundedRect(field, 4, 4);
    painter.setPen(foreground);
    painter.setFont(font);
    painter.drawText(field, Qt::AlignCenter, text);
    return image;
}
