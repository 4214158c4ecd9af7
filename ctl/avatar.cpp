#include "avatar.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>
#include <QtMath>

#include <cmath>
#include <initializer_list>

namespace {

constexpr QSize Size(240, 320);
constexpr qreal Middle = 120;
constexpr qreal EyeLine = 148;
constexpr qreal EyeDistance = 25; // from the middle

enum class Hair
{
    Short,
    Parted,
    Crew,
    Curly,
    Receding,
    Long,
    Bob,
    Bun,
    Wavy,
};

enum class Clothes
{
    Shirt,
    Jumper,
    Jacket,
    Overall,
};

/// The features in which faces differ.
struct Look
{
    QColor background;
    QColor skin;
    QColor hairColor;
    QColor eyes;
    QColor cloth;
    Hair hair = Hair::Short;
    Clothes clothes = Clothes::Shirt;
    qreal width = 54; ///< half the width of the head
    qreal jaw = 0.62; ///< width of the chin, as a fraction of the head's
    qreal smile = 6;
    qreal brows = 0; ///< height of the outer end above the inner one
    bool female = false;
    bool glasses = false;
    bool beard = false;
    bool moustache = false;
};

template <class List> auto pick(QRandomGenerator &random, const List &list)
{
    return *(list.begin() + random.bounded(int(list.size())));
}

QColor color(QRandomGenerator &random, std::initializer_list<const char *> names)
{
    return QColor(QLatin1String(pick(random, names)));
}

Look lookOf(Sex sex, quint32 seed)
{
    QRandomGenerator random(seed);
    const auto chance = [&random](int percent) { return random.bounded(100) < percent; };
    Look look;
    look.female = sex == Sex::Female;
    look.background = color(random, {"#cfe3ee", "#d9e6d2", "#e9e1d3", "#dcdcec", "#e6dbe2", "#d3e4e2", "#e3e3e0"});
    look.skin = color(random, {"#f6d7c0", "#f2cbb0", "#edc09f", "#f8decb", "#e5b592"});
    look.eyes = color(random, {"#4a6b8a", "#5b4632", "#54683f", "#3f5f73", "#6b4a2f"});
    const bool grey = chance(18);
    look.hairColor = grey
        ? color(random, {"#b9b7b3", "#9a9894", "#cfccc6"})
        : color(random, {"#2e2520", "#4a3526", "#6d4a2e", "#93683d", "#c39a5f", "#7b3f26", "#1f1c1b"});
    look.cloth =
        color(random, {"#3f6a8c", "#5d7f5a", "#8b4f55", "#4d5560", "#7a6a9a", "#b0763f", "#2f6f6d", "#8a8f98"});
    look.clothes = pick(
        random, std::initializer_list<Clothes>{Clothes::Shirt, Clothes::Jumper, Clothes::Jacket, Clothes::Overall});
    look.hair = look.female
        ? pick(random, std::initializer_list<Hair>{Hair::Long, Hair::Bob, Hair::Bun, Hair::Wavy})
        : pick(random, std::initializer_list<Hair>{Hair::Short, Hair::Parted, Hair::Crew, Hair::Curly, Hair::Receding});
    look.width = (look.female ? 49 : 53) + random.bounded(6);
    look.jaw = (look.female ? 0.42 : 0.58) + random.bounded(14) / 100.0;
    look.smile = 3 + random.bounded(7);
    look.brows = random.bounded(5) - 2;
    look.glasses = chance(25);
    look.beard = !look.female && chance(22);
    look.moustache = !look.female && (look.beard || chance(12));
    return look;
}

class Portrait
{
public:
    explicit Portrait(const Look &look)
        : m_look(look)
        , m_image(Size, QImage::Format_RGB32)
        , m_painter(&m_image)
    {
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(Qt::NoPen);
    }

    QImage draw()
    {
        drawBackground();
        drawHairBehind();
        drawBody();
        drawHead();
        if (m_look.beard)
            drawBeard();
        drawFace();
        drawHair();
        if (m_look.glasses)
            drawGlasses();
        m_painter.end();
        return m_image;
    }

private:
    [[nodiscard]] qreal left() const { return Middle - m_look.width; }
    [[nodiscard]] qreal right() const { return Middle + m_look.width; }
    [[nodiscard]] QColor shade() const { return m_look.skin.darker(114); }

    void fill(const QPainterPath &path, const QColor &color) { m_painter.fillPath(path, color); }

    void line(const QPainterPath &path, const QColor &color, qreal width)
    {
        m_painter.strokePath(path, QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }

    void ellipse(QPointF center, qreal rx, qreal ry, const QColor &color)
    {
        QPainterPath path;
        path.addEllipse(center, rx, ry);
        fill(path, color);
    }

    void drawBackground()
    {
        QLinearGradient gradient(0, 0, 0, Size.height());
        gradient.setColorAt(0, m_look.background.lighter(108));
        gradient.setColorAt(1, m_look.background.darker(112));
        m_painter.fillRect(m_image.rect(), gradient);
    }

    /// Closes the outline of the right half, which starts and ends on the middle line, with its mirror image.
    static QPainterPath mirrored(const QPainterPath &half)
    {
        const QTransform mirror(-1, 0, 0, 1, 2 * Middle, 0);
        QPainterPath whole = half;
        whole.connectPath(mirror.map(half).toReversed());
        whole.closeSubpath();
        return whole;
    }

    [[nodiscard]] QPainterPath headShape() const
    {
        const qreal chin = m_look.width * m_look.jaw;
        QPainterPath half(QPointF(Middle, 76));
        half.cubicTo(right() - 14, 76, right(), 104, right(), 142);
        half.cubicTo(right(), 176, Middle + chin, 216, Middle, 217);
        return mirrored(half);
    }

    void drawHairBehind()
    {
        const qreal out = right() + (m_look.hair == Hair::Wavy ? 20 : 12);
        QPainterPath half(QPointF(Middle, 62));
        half.cubicTo(out - 6, 62, out, 100, out, 150);
        switch (m_look.hair) {
        case Hair::Long:
            half.cubicTo(out + 2, 200, out + 6, 240, out - 2, 268);
            break;
        case Hair::Wavy:
            half.cubicTo(out - 14, 190, out + 14, 215, out - 6, 246);
            break;
        case Hair::Bob:
            half.cubicTo(out + 2, 180, out + 2, 200, out - 10, 214);
            break;
        case Hair::Bun:
            ellipse({Middle, 58}, 27, 25, m_look.hairColor.darker(108));
            return;
        default:
            return;
        }
        half.lineTo(Middle, half.currentPosition().y());
        fill(mirrored(half), m_look.hairColor.darker(118));
    }

    void drawBody()
    {
        const qreal shoulder = m_look.female ? 92 : 104;
        QPainterPath half(QPointF(Middle, 236));
        half.lineTo(Middle + 24, 238);
        half.cubicTo(Middle + 42, 252, Middle + shoulder, 252, Middle + shoulder + 4, 320);
        half.lineTo(Middle, 320);
        fill(mirrored(half), m_look.clothes == Clothes::Jacket ? m_look.cloth.darker(150) : m_look.cloth);
        drawNeck();
        switch (m_look.clothes) {
        case Clothes::Shirt:
            drawCollar(m_look.cloth.lighter(118));
            break;
        case Clothes::Jumper:
            drawNeckband();
            break;
        case Clothes::Jacket:
            drawLapels();
            break;
        case Clothes::Overall:
            drawStraps();
            break;
        }
    }

    void drawNeck()
    {
        const qreal width = m_look.female ? 20 : 26;
        QPainterPath half(QPointF(Middle, 180));
        half.lineTo(Middle + width, 180);
        half.lineTo(Middle + width, 232);
        half.quadTo(Middle + width - 2, 256, Middle, 264);
        fill(mirrored(half), shade());
    }

    void drawCollar(const QColor &color)
    {
        for (const qreal side : {-1.0, 1.0}) {
            QPainterPath collar(QPointF(Middle + side * 28, 230));
            collar.lineTo(Middle + side * 2, 264);
            collar.lineTo(Middle + side * 22, 284);
            collar.lineTo(Middle + side * 40, 246);
            collar.closeSubpath();
            fill(collar, color);
        }
        QPainterPath seam(QPointF(Middle, 268));
        seam.lineTo(Middle, 320);
        line(seam, m_look.cloth.darker(122), 2);
    }

    void drawNeckband()
    {
        QPainterPath band(QPointF(Middle - 30, 238));
        band.quadTo(Middle, 290, Middle + 30, 238);
        line(band, m_look.cloth.darker(118), 9);
    }

    void drawLapels()
    {
        QPainterPath shirt(QPointF(Middle - 27, 234));
        shirt.lineTo(Middle, 262);
        shirt.lineTo(Middle + 27, 234);
        shirt.lineTo(Middle + 34, 244);
        shirt.lineTo(Middle, 320);
        shirt.lineTo(Middle - 34, 244);
        shirt.closeSubpath();
        fill(shirt, QColor(0xf4, 0xf4, 0xf2));
        for (const qreal side : {-1.0, 1.0}) {
            QPainterPath lapel(QPointF(Middle + side * 32, 236));
            lapel.lineTo(Middle + side * 54, 262);
            lapel.lineTo(Middle + side * 44, 272);
            lapel.lineTo(Middle + side * 50, 282);
            lapel.lineTo(Middle, 322);
            lapel.closeSubpath();
            fill(lapel, m_look.cloth.darker(175));
        }
        if (m_look.female)
            return;
        QPainterPath tie(QPointF(Middle - 7, 262));
        tie.lineTo(Middle + 7, 262);
        tie.lineTo(Middle + 4, 272);
        tie.lineTo(Middle + 10, 320);
        tie.lineTo(Middle - 10, 320);
        tie.lineTo(Middle - 4, 272);
        tie.closeSubpath();
        fill(tie, m_look.cloth);
    }

    void drawStraps()
    {
        drawCollar(QColor(0xe8, 0xe6, 0xe0));
        for (const qreal side : {-1.0, 1.0}) {
            QPainterPath strap(QPointF(Middle + side * 52, 252));
            strap.lineTo(Middle + side * 46, 322);
            line(strap, m_look.cloth.darker(140), 15);
            ellipse({Middle + side * 48, 300}, 4, 4, QColor(0xd9, 0xc2, 0x7a));
        }
    }

    void drawHead()
    {
        for (const qreal x : {left(), right()})
            ellipse({x, 152}, 9, 15, shade());
        QPainterPath shadow = headShape().translated(0, 9);
        m_painter.save();
        m_painter.setClipRect(QRectF(Middle - 26, 200, 52, 40));
        fill(shadow, shade().darker(112));
        m_painter.restore();
        fill(headShape(), m_look.skin);
    }

    void drawFace()
    {
        QColor blush(0xe8, 0x7f, 0x6f);
        blush.setAlpha(m_look.female ? 52 : 28);
        for (const qreal side : {-1.0, 1.0}) {
            drawEye(side);
            ellipse({Middle + side * (m_look.width - 19), 176}, 11, 8, blush);
        }
        QPainterPath nose(QPointF(Middle + 2, 152));
        nose.quadTo(Middle + 9, 172, Middle + 7, 175);
        nose.quadTo(Middle + 1, 179, Middle - 6, 175);
        line(nose, shade().darker(106), 2.6);
        drawMouth();
    }

    void drawEye(qreal side)
    {
        const QPointF center(Middle + side * EyeDistance, EyeLine);
        ellipse(center, 9.5, 6.6, Qt::white);
        ellipse(center, 5.2, 5.6, m_look.eyes);
        ellipse(center, 2.5, 2.7, QColor(0x1d, 0x1a, 0x19));
        ellipse(center + QPointF(1.8, -2), 1.4, 1.4, Qt::white);
        QPainterPath lid(center + QPointF(-10, 0));
        lid.quadTo(center + QPointF(0, -12), center + QPointF(10, 0));
        line(lid, m_look.female ? QColor(0x33, 0x2a, 0x26) : shade().darker(145), m_look.female ? 2.6 : 2.0);
        QPainterPath brow(center + QPointF(-side * 11, -14));
        brow.quadTo(center + QPointF(side * 2, -20 - m_look.brows), center + QPointF(side * 13, -14 - m_look.brows));
        line(brow, m_look.hairColor.darker(125), m_look.female ? 3 : 4.4);
    }

    void drawMouth()
    {
        const qreal y = 194;
        if (m_look.moustache) {
            QPainterPath half(QPointF(Middle, 182));
            half.cubicTo(Middle + 12, 180, Middle + 22, 186, Middle + 26, 195);
            half.cubicTo(Middle + 16, 192, Middle + 8, 191, Middle, 190);
            fill(mirrored(half), m_look.hairColor.darker(106));
        }
        const QColor lips = m_look.female ? QColor(0xb8, 0x4e, 0x55) : m_look.skin.darker(155);
        QPainterPath mouth(QPointF(Middle - 16, y));
        mouth.quadTo(Middle, y + m_look.smile * 1.6, Middle + 16, y);
        if (m_look.female)
            mouth.quadTo(Middle, y - 3, Middle - 16, y);
        line(mouth, lips, m_look.female ? 2.4 : 3);
        if (m_look.female)
            fill(mouth, lips);
    }

    void drawBeard()
    {
        QPainterPath face = headShape();
        QPainterPath half(QPointF(Middle, 181));
        half.cubicTo(Middle + 26, 180, right() - 22, 178, right() - 8, 150);
        half.lineTo(right() + 4, 150);
        half.lineTo(right() + 4, 230);
        half.lineTo(Middle, 230);
        QPainterPath lips;
        lips.addEllipse(QPointF(Middle, 197), 19, 8);
        fill(face.intersected(mirrored(half)).subtracted(lips), m_look.hairColor);
    }

    void drawHair()
    {
        switch (m_look.hair) {
        case Hair::Crew:
            drawCap(104, 112, 4);
            break;
        case Hair::Short:
            drawCap(112, 140, 9);
            break;
        case Hair::Receding:
            drawReceding();
            break;
        case Hair::Parted:
            drawParted(false);
            break;
        case Hair::Curly:
            drawCurls();
            break;
        case Hair::Bun:
            drawParted(true);
            break;
        case Hair::Long:
            drawCurtain(196);
            break;
        case Hair::Wavy:
            drawParted(true);
            break;
        case Hair::Bob:
            drawFringe();
            break;
        }
    }

    /// Short hair with sideburns.
    void drawCap(qreal forehead, qreal sides, qreal height)
    {
        QPainterPath half(QPointF(Middle, 76 - height));
        half.cubicTo(right() - 8, 74 - height, right() + 5, 100, right() + 3, sides);
        half.lineTo(right() - 4, sides + 4);
        half.cubicTo(right() - 8, forehead + 6, right() - 16, forehead, Middle, forehead - 4);
        fill(mirrored(half), m_look.hairColor);
    }

    void drawReceding()
    {
        for (const qreal side : {-1.0, 1.0}) {
            const qreal edge = Middle + side * m_look.width;
            QPainterPath tuft(QPointF(edge + side * 4, 142));
            tuft.cubicTo(edge + side * 6, 112, edge - side * 4, 92, edge - side * 20, 84);
            tuft.cubicTo(edge - side * 15, 104, edge - side * 8, 116, edge - side * 5, 144);
            tuft.closeSubpath();
            fill(tuft, m_look.hairColor);
        }
    }

    /// Hair with a side parting; \a full hair reaches down to the ears.
    void drawParted(bool full)
    {
        const qreal parting = Middle - 20;
        const qreal end = full ? 158 : 136;
        QPainterPath big(QPointF(parting, 72));
        big.cubicTo(Middle + 30, 56, right() + 8, 84, right() + 5, end);
        big.lineTo(right() - 4, end + 2);
        big.cubicTo(right() - 6, 116, Middle + 20, 112, parting, 84);
        big.closeSubpath();
        fill(big, m_look.hairColor);
        QPainterPath small(QPointF(parting + 4, 70));
        small.cubicTo(left() + 10, 66, left() - 8, 92, left() - 5, end);
        small.lineTo(left() + 4, end + 2);
        small.cubicTo(left() + 6, 118, left() + 20, 104, parting + 2, 86);
        small.closeSubpath();
        fill(small, m_look.hairColor.darker(107));
    }

    void drawCurls()
    {
        for (int degree = 180; degree <= 360; degree += 18) {
            const qreal angle = qDegreesToRadians(qreal(degree));
            ellipse({Middle + std::cos(angle) * (m_look.width - 1), 116 + std::sin(angle) * 42}, 15, 15,
                    m_look.hairColor);
        }
        for (const qreal x : {-28.0, -9.0, 10.0, 29.0})
            ellipse({Middle + x, 92}, 17, 14, m_look.hairColor.darker(104));
    }

    /// Long hair with a middle parting that reaches down to \a end on both sides.
    void drawCurtain(qreal end)
    {
        QPainterPath half(QPointF(Middle, 64));
        half.cubicTo(right() - 4, 62, right() + 12, 96, right() + 10, end);
        half.cubicTo(right() + 2, end + 8, right() - 8, end - 10, right() - 6, 150);
        half.cubicTo(right() - 10, 118, Middle + 20, 104, Middle, 82);
        fill(mirrored(half), m_look.hairColor);
    }

    void drawFringe()
    {
        QPainterPath half(QPointF(Middle, 63));
        half.cubicTo(right() - 4, 62, right() + 12, 96, right() + 11, 196);
        half.cubicTo(right() + 4, 206, right() - 8, 196, right() - 6, 150);
        half.lineTo(right() - 9, 122);
        half.quadTo(Middle + 24, 128, Middle, 126);
        fill(mirrored(half), m_look.hairColor);
    }

    void drawGlasses()
    {
        const QColor frame(0x3a, 0x3d, 0x44);
        for (const qreal side : {-1.0, 1.0}) {
            QPainterPath lens;
            lens.addRoundedRect(QRectF(Middle + side * EyeDistance - 18, EyeLine - 14, 36, 28), 10, 10);
            fill(lens, QColor(255, 255, 255, 46));
            line(lens, frame, 2.6);
            QPainterPath temple(QPointF(Middle + side * (EyeDistance + 18), EyeLine - 4));
            temple.lineTo(Middle + side * m_look.width, EyeLine - 7);
            line(temple, frame, 2.6);
        }
        QPainterPath bridge(QPointF(Middle - 8, EyeLine - 4));
        bridge.quadTo(Middle, EyeLine - 9, Middle + 8, EyeLine - 4);
        line(bridge, frame, 2.6);
    }

    Look m_look;
    QImage m_image;
    QPainter m_painter;
};

} // namespace

QImage drawAvatar(Sex sex, quint32 seed)
{
    return Portrait(lookOf(sex, seed)).draw();
}
