#include "colorselectdelegate.h"
#include "schedulemodedelegate.h"

#include <QComboBox>
#include <QPainter>
#include <QProxyStyle>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QtTest>

namespace {

/// Remembers the item that was drawn last.
class RecordingStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *, const QWidget *) const override
    {
        if (element == CE_ItemViewItem)
            drawn = *static_cast<const QStyleOptionViewItem *>(option);
    }

    mutable QStyleOptionViewItem drawn;
};

} // namespace

class TestListDelegates : public QObject
{
    Q_OBJECT

private slots:
    void shouldDrawModesByName_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("text");
        QTest::newRow("fixed") << 0 << "Фиксированный";
        QTest::newRow("shift") << 1 << "Сменный";
        QTest::newRow("free") << 2 << "Ненормированный";
        QTest::newRow("calendar") << 3 << "Календарный";
        QTest::newRow("personal") << 4 << "Индивидуальный";
        QTest::newRow("unknown") << 7 << "Не указан";
    }

    void shouldDrawModesByName()
    {
        QFETCH(int, mode);
        RecordingStyle style;
        QWidget widget;
        widget.setStyle(&style);
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), mode, Qt::DisplayRole);
        QStyleOptionViewItem option;
        option.widget = &widget;
        QPixmap pixmap(200, 30);
        QPainter painter(&pixmap);
        ScheduleModeDelegate().paint(&painter, option, model.index(0, 0));
        QTEST(style.drawn.text, "text");
        QVERIFY(style.drawn.features & QStyleOptionViewItem::HasDisplay);
        QVERIFY(!(style.drawn.features & QStyleOptionViewItem::HasDecoration));
    }

    void shouldDrawTheDecoration()
    {
        RecordingStyle style;
        QWidget widget;
        widget.setStyle(&style);
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), QIcon(pixmap), Qt::DecorationRole);
        QStyleOptionViewItem option;
        option.widget = &widget;
        QPainter painter(&pixmap);
        ScheduleModeDelegate().paint(&painter, option, model.index(0, 0));
        QVERIFY(style.drawn.features & QStyleOptionViewItem::HasDecoration);
        QVERIFY(!style.drawn.icon.isNull());
    }

    void shouldEditModes()
    {
        QStandardItemModel model(1, 1);
        const auto index = model.index(0, 0);
        model.setData(index, 3, Qt::DisplayRole);
        QWidget parent;
        const ScheduleModeDelegate delegate;
        const auto editor = qobject_cast<QComboBox *>(delegate.createEditor(&parent, {}, index));
        QVERIFY(editor);
        QCOMPARE(editor->parentWidget(), &parent);
        QList<int> modes;
        for (int i = 0; i < editor->count(); ++i)
            modes.append(editor->itemData(i).toInt());
        QCOMPARE(modes, (QList<int>{0, 1, 3, 2, 4}));

        delegate.setEditorData(editor, index);
        QCOMPARE(editor->currentText(), "Календарный");
        editor->setCurrentIndex(4);
        delegate.setModelData(editor, &model, index);
        QCOMPARE(index.data(Qt::EditRole), QVariant(4));
        model.setData(index, 7, Qt::DisplayRole);
        delegate.setEditorData(editor, index);
        QCOMPARE(editor->currentIndex(), -1);
    }

    void shouldDrawColorSamples()
    {
        QStandardItemModel model(1, 1);
        const auto index = model.index(0, 0);
        const ColorSelectDelegate delegate;
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 40, 30);
        option.palette.setColor(QPalette::Base, Qt::white);
        QImage image(option.rect.size(), QImage::Format_RGB32);
        const auto paint = [&](const QString &color) {
            model.setData(index, color, Qt::DisplayRole);
            image.fill(Qt::white);
            QPainter painter(&image);
            const QPen pen = painter.pen();
            delegate.paint(&painter, option, index);
            QCOMPARE(painter.pen(), pen);
        };
        paint({});
        QCOMPARE(image.pixelColor(20, 15), QColor(Qt::white));
        paint("#204080");
        // Lighter at the top, the colour itself at the bottom, nothing but the sample around it.
        QVERIFY(image.pixelColor(20, 10).lightness() > image.pixelColor(20, 20).lightness());
        QVERIFY(qAbs(image.pixelColor(20, 20).blue() - 0x80) < 16);
        QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
        QCOMPARE(delegate.sizeHint(option, index), QSize(16, 16));
        QVERIFY(!delegate.createEditor(nullptr, option, index));
    }
};

QTEST_MAIN(TestListDelegates)
#include "tst_listdelegates.moc"
