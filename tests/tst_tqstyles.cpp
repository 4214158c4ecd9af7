#include "propertypanelhelper.h"
#include "testcolumns.h"
#include "tqguiglobals.h"
#include "tqstyles.h"

#include <QIcon>
#include <QImage>
#include <QSvgRenderer>
#include <QtTest>

#include <cmath>

namespace {

qreal luminance(const QColor &colour)
{
    const auto linear = [](qreal c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// Contrast as defined by the Web Content Accessibility Guidelines; 4.5 is enough for text.
qreal contrast(const QColor &a, const QColor &b)
{
    const qreal x = luminance(a);
    const qreal y = luminance(b);
    return (qMax(x, y) + 0.05) / (qMin(x, y) + 0.05);
}

QStringList namesIn(const QString &file)
{
    static const QRegularExpression pattern(
        QStringLiteral("\"((?:action|object|plugin|panel|dialog|connection|view-theme|edit|arrow|document|window|"
                       "application)-[A-Za-z_-]+)\"|"
                       "theme=\"([^\"]+)\""));
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return {};
    QStringList names;
    auto matches = pattern.globalMatch(QString::fromUtf8(source.readAll()));
    while (matches.hasNext()) {
        const auto match = matches.next();
        names.append(match.captured(1).isEmpty() ? match.captured(2) : match.captured(1));
    }
    return names;
}

QImage drawn(const QString &name, int extent = 24)
{
    return QIcon::fromTheme(name).pixmap(extent, extent).toImage().convertToFormat(QImage::Format_ARGB32);
}

bool isBlank(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 40)
                return false;
        }
    }
    return true;
}

QByteArray picture(const QSize &size, const char *format, QImage::Format pixels = QImage::Format_RGB32)
{
    QImage image(size, pixels);
    image.fill(pixels == QImage::Format_Mono ? 0 : QColor(Qt::darkGreen).rgb());
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return data;
}

} // namespace

class TestTqStyles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tqstyles::install(); }

    void shouldContainEveryUsedIcon()
    {
        QStringList names;
        // These names are built from object types at run time.
        for (const char *type :
             {"WORKER", "WORKER-d", "DEPARTMENT", "FIRM", "SUBJECTROOT", "SCHEDULE_SHIFT", "SHIFT_INTERVAL"})
            names.append("object-OT_" + QLatin1String(type));
        for (const char *folder : {"src", "host", "client", "guides"}) {
            QDirIterator files(QStringLiteral(SOURCE_DIR "/") + QLatin1String(folder), {"*.cpp", "*.h", "*.ui"},
                               QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext())
                names += namesIn(files.next());
        }
        names.removeDuplicates();
        QVERIFY(names.contains("edit-find"));

        QStringList invalid;
        for (const auto theme : {tqstyles::Theme::Light, tqstyles::Theme::Dark}) {
            tqstyles::applyTheme(theme);
            for (const QString &name : qAsConst(names)) {
                const QString file = QStringLiteral(":/orvex-icons/%1/scalable/%2.svg").arg(QIcon::themeName(), name);
                if (!QSvgRenderer(file).isValid() || isBlank(drawn(name, 16)) || drawn(name, 72).width() != 72)
                    invalid.append(QIcon::themeName() + QLatin1Char('/') + name);
            }
        }
        QCOMPARE(invalid, QStringList());
    }

    void shouldRedrawAnIconAfterAChangeOfTheTheme()
    {
        tqstyles::applyTheme(tqstyles::Theme::Light);
        const QIcon icon = QIcon::fromTheme("edit-find");
        const QImage light = icon.pixmap(24, 24).toImage();
        tqstyles::applyTheme(tqstyles::Theme::Dark);
        const QImage dark = icon.pixmap(24, 24).toImage();
        QVERIFY(light != dark);
        tqstyles::applyTheme(tqstyles::Theme::Light);
        QCOMPARE(icon.pixmap(24, 24).toImage(), light);
    }

    void shouldHaveEnoughContrast()
    {
        const QList<QPair<QPalette::ColorRole, QPalette::ColorRole>> texts{
            {QPalette::Text, QPalette::Base},
            {QPalette::Text, QPalette::AlternateBase},
            {QPalette::WindowText, QPalette::Window},
            {QPalette::ButtonText, QPalette::Button},
            {QPalette::HighlightedText, QPalette::Highlight},
            {QPalette::PlaceholderText, QPalette::Base},
            {QPalette::ToolTipText, QPalette::ToolTipBase},
            {QPalette::Link, QPalette::Base}};
        for (const auto theme : {tqstyles::Theme::Light, tqstyles::Theme::Dark}) {
            tqstyles::applyTheme(theme);
            const QPalette palette = QGuiApplication::palette();
            for (const auto group : {QPalette::Active, QPalette::Inactive}) {
                for (const auto &[text, field] : texts)
                    QVERIFY2(contrast(palette.color(group, text), palette.color(group, field)) >= 4.5,
                             qPrintable(QIcon::themeName() + QVariant::fromValue(text).toString()));
            }
            QVERIFY(contrast(TQGuiGlobals::titleColor(), palette.color(QPalette::Base)) >= 4.5);
            QVERIFY(contrast(tqstyles::red(), palette.color(QPalette::Base)) >= 3); // used for lines, not for text
        }
    }

    void shouldScalePhotosToTheirFrame_data()
    {
        support::addColumns<QByteArray, QSize>({"data", "size"});
        const QByteArray svg =
            "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><rect width='9' height='9'/></svg>";
        QTest::newRow("no photo") << QByteArray() << QSize(96, 128);
        QTest::newRow("not a picture") << QByteArray("no picture at all") << QSize(96, 128);
        QTest::newRow("cut off") << picture({300, 400}, "png").left(60) << QSize(96, 128);
        QTest::newRow("far too large") << picture({9000, 9000}, "png", QImage::Format_Mono) << QSize(96, 128);
        QTest::newRow("too long to decode") << picture({2000, 2000}, "bmp") << QSize(96, 128);
        QTest::newRow("a document, not a photo") << svg << QSize(96, 128);
        QTest::newRow("tall") << picture({320, 1280}, "png") << QSize(32, 128);
        QTest::newRow("wide") << picture({4000, 2000}, "jpg") << QSize(96, 48);
        QTest::newRow("small") << picture({3, 4}, "png") << QSize(96, 128);
    }

    void shouldScalePhotosToTheirFrame()
    {
        QFETCH(QByteArray, data);
        QFETCH(QSize, size);
        const QPixmap pixmap = PropertyPanelHelper::pixmapByPhotoType(data, "PT_PHOTO_PREVIEW");
        QCOMPARE(pixmap.size(), size);
        QVERIFY(!isBlank(pixmap.toImage()));
    }

    void shouldDrawBadgesInTheResolutionOfTheScreen()
    {
        const QColor orange = tqstyles::orange();
        QVERIFY(contrast(orange, Qt::black) >= 4.5);
        const QFont font;
        const QImage one = PropertyPanelHelper::createColoredText("004217", orange, Qt::black, font, 1);
        const QImage two = PropertyPanelHelper::createColoredText("004217", orange, Qt::black, font, 2);
        QCOMPARE(two.size(), one.size() * 2);
        QCOMPARE(two.devicePixelRatio(), 2.0);
        QCOMPARE(one.pixelColor(3, one.height() / 2), orange);
        QVERIFY(one.width() > QFontMetrics(font).horizontalAdvance("004217"));
    }
};

QTEST_MAIN(TestTqStyles)
#include "tst_tqstyles.moc"
