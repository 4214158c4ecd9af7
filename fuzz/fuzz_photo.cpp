#include "target.h"

#include "propertypanelhelper.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>

// Photos of employees in any format.

QVector<QByteArray> fuzzSeeds()
{
    QVector<QByteArray> seeds;
    QImage image(60, 40, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x * 4, y * 6, x * y, 200 + x % 50));
    }
    for (const QByteArray &format : {QByteArray("png"), QByteArray("jpeg"), QByteArray("bmp"), QByteArray("webp")}) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        if (QImageWriter::supportedImageFormats().contains(format) && image.save(&buffer, format.constData()))
            seeds.append(buffer.data());
    }
    seeds.append(
        QByteArray("GIF89a\x01\0\x01\0\x80\0\0\0\0\0\xff\xff\xff!\xf9\x04\x01\0\0\0\0,\0\0\0\0\x01\0\x01\0\0\x02"
                   "\x01"
                   "D\0;",
                   43));
    return seeds;
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    fuzz::silenceLogging();
    static auto *application = new QGuiApplication(*argc, *argv);
    Q_UNUSED(application)
    fuzz::writeSeeds();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    static const QImage none = PropertyPanelHelper::pixmapByPhotoType({}, QStringLiteral("PT_PHOTO_PREVIEW")).toImage();
    const QPixmap pixmap = PropertyPanelHelper::pixmapByPhotoType(bytes, QStringLiteral("PT_PHOTO_PREVIEW"));
    fuzz::require(!pixmap.isNull() && pixmap.width() <= 96 && pixmap.height() <= 128,
                  "a photo has at most the size of its preview");
    // Anything but the placeholder counts as accepted.
    fuzz::accepted += pixmap.toImage() != none;
    return 0;
}
