#include "descriptionwriter.h"

#include "propertypanelhelper.h"

#include <QImage>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>

namespace {

constexpr int LineAndTwoEmptyLines = 3;
constexpr qreal CellPadding = 2;
constexpr qreal LineWidth = 1;
constexpr qreal PictureCellPadding = 4;

QTextCharFormat gapFormat()
{
    QTextCharFormat format = PropertyPanelHelper::textformat();
    QFont font = format.font();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() / 2);
    else
        font.setPixelSize(qMax(1, font.pixelSize() / 2));
    format.setFont(font);
    return format;
}

QTextBlockFormat centred()
{
    QTextBlockFormat format;
    format.setAlignment(Qt::AlignHCenter);
    return format;
}

} // namespace

DescriptionWriter::DescriptionWriter(QTextDocument *document)
    : m_cursor(document)
    , m_title(PropertyPanelHelper::titleformat())
    , m_text(PropertyPanelHelper::textformat())
    , m_name(PropertyPanelHelper::nameformat())
    , m_gap(gapFormat())
    , m_cellParam(PropertyPanelHelper::tableCellParamFormat())
    , m_cellValue(PropertyPanelHelper::tableCellValueFormat())
    , m_cellHeader(PropertyPanelHelper::tableCellParamFormat())
{
    m_cursor.beginEditBlock();
}

DescriptionWriter::~DescriptionWriter()
{
    m_cursor.endEditBlock();
}

void DescriptionWriter::addName(const QString &name)
{
    m_cursor.insertText(name, m_name);
    addLineBreaks(LineAndTwoEmptyLines);
}

void DescriptionWriter::addItem(const QString &label, const QString &value)
{
    addLabel(label);
    m_cursor.insertText(value, m_text);
    addLineBreaks(LineAndTwoEmptyLines);
}

void DescriptionWriter::addItem(const QString &label, bool yes)
{
    addItem(label, yes ? tr("Да") : tr("Нет"));
}

void DescriptionWriter::addItem(const QString &label, const QImage &picture, const QString &text)
{
    addLabel(label);
    insertPicture(m_cursor, picture, QStringLiteral("value"), text);
    addLineBreaks(LineAndTwoEmptyLines);
}

void DescriptionWriter::addCaption(const QString &caption)
{
    m_cursor.insertText(caption, PropertyPanelHelper::tableTitleFormat());
}

QTextTable *DescriptionWriter::addTable(int rows, const QVector<int> &columnPercents)
{
    QVector<QTextLength> widths;
    for (const int percent : columnPercents)
        widths.append(QTextLength(QTextLength::PercentageLength, percent));
    QTextTableFormat format = PropertyPanelHelper::tableFormat(Qt::AlignHCenter);
    format.setColumnWidthConstraints(widths);
    format.setBackground(Qt::transparent);
    format.setCellPadding(CellPadding);
    // Instead of borders: spacing between the cells, in which the view draws the lines.
    format.setBorder(0);
    format.setCellSpacing(LineWidth);
    QTextTable *table = m_cursor.insertTable(rows, widths.size(), format);
    // All cells at once: formatting them one by one makes a long table about a third slower.
    QTextCursor cells = table->cellAt(0, 0).firstCursorPosition();
    cells.setPosition(table->lastPosition(), QTextCursor::KeepAnchor);
    cells.setBlockFormat(centred());
    m_cursor.movePosition(QTextCursor::End);
    m_cursor.setBlockCharFormat(m_gap);
    return table;
}

void DescriptionWriter::setCell(QTextTable *table, int row, int column, const QString &text, Cell kind)
{
    QTextCursor cursor = table->cellAt(row, column).firstCursorPosition();
    cursor.insertText(text, kind == Cell::Value ? m_cellValue : kind == Cell::Param ? m_cellParam : m_cellHeader);
}

void DescriptionWriter::setHeader(QTextTable *table, const QStringList &texts)
{
    for (int column = 0; column < texts.size(); ++column) {
        QString text = texts.at(column);
        setCell(table, 0, column, text.replace(QLatin1Char('\n'), QChar::LineSeparator), Cell::Header);
    }
}

void DescriptionWriter::addTitle(const QImage &picture, const QString &name)
{
    const qreal pictureWidth = picture.width() / picture.devicePixelRatio() + 2 * PictureCellPadding;
    QTextTableFormat format;
    format.setBorder(0);
    format.setCellSpacing(0);
    format.setCellPadding(PictureCellPadding);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    format.setColumnWidthConstraints(
        {QTextLength(QTextLength::FixedLength, pictureWidth), QTextLength(QTextLength::VariableLength, 0)});
    QTextTable *table = m_cursor.insertTable(1, 2, format);
    QTextCursor pictureCursor = table->cellAt(0, 0).firstCursorPosition();
    insertPicture(pictureCursor, picture, QStringLiteral("photo"), name);
    QTextTableCell nameCell = table->cellAt(0, 1);
    nameCell.firstCursorPosition().insertText(name, m_name);
    QTextCharFormat middle = nameCell.format();
    middle.setVerticalAlignment(QTextCharFormat::AlignMiddle);
    nameCell.setFormat(middle);
    m_cursor.movePosition(QTextCursor::End);
    m_cursor.setBlockCharFormat(m_gap);
    // The document already has an empty line after the table.
    addLineBreaks(LineAndTwoEmptyLines - 1);
}

void DescriptionWriter::addLabel(const QString &label)
{
    m_cursor.insertText(label, m_title);
    addLineBreaks(1);
}

void DescriptionWriter::addLineBreaks(int count)
{
    m_cursor.insertText(QString(count, QLatin1Char('\n')), m_gap);
}

void DescriptionWriter::insertPicture(QTextCursor &cursor, const QImage &picture, const QString &resource,
                                      const QString &text)
{
    if (picture.isNull())
        return;
    cursor.document()->addResource(QTextDocument::ImageResource, QUrl(resource), picture);
    QTextImageFormat format;
    format.setName(resource);
    format.setWidth(picture.width() / picture.devicePixelRatio());
    format.setHeight(picture.height() / picture.devicePixelRatio());
    format.setProperty(QTextFormat::ImageAltText, text);
    cursor.insertImage(format);
}
