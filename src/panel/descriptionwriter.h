#pragma once

#include <QCoreApplication>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextTableFormat>
#include <QVector>

class QImage;
class QTextDocument;
class QTextTable;

/// Writes a description into a document, piece by piece, in the look of the property panels. All of it is one edit: the
/// document is laid out once, when the writer goes. Texts are inserted as they are, never read as markup.
class DescriptionWriter
{
    Q_DECLARE_TR_FUNCTIONS(DescriptionWriter)
    Q_DISABLE_COPY(DescriptionWriter)

public:
    enum class Cell
    {
        Header,
        Param, ///< of a first column
        Value
    };

    /// \a document is empty and outlives the writer.
    explicit DescriptionWriter(QTextDocument *document);
    ~DescriptionWriter();

    /// The name of what is described, with the empty lines behind it.
    void addName(const QString &name);
    /// A label and its value below, with the empty lines behind them.
    void addItem(const QString &label, const QString &value);
    void addItem(const QString &label, bool yes);
    /// The same with a picture for the value; \a text is what the picture says. A null picture leaves the line empty.
    void addItem(const QString &label, const QImage &picture, const QString &text);
    /// The caption of the table that follows.
    void addCaption(const QString &caption);

    /// A table of centred texts, over the whole width.
    QTextTable *addTable(int rows, const QVector<int> &columnPercents);
    void setCell(QTextTable *table, int row, int column, const QString &text, Cell kind);
    /// The first row of a table; a line break in a text stays one.
    void setHeader(QTextTable *table, const QStringList &texts);
    /// A picture with the name of what is described beside it, with the empty lines behind them.
    void addTitle(const QImage &picture, const QString &name);

    [[nodiscard]] const QTextCharFormat &valueFormat() const { return m_cellValue; }

private:
    void addLabel(const QString &label);
    void addLineBreaks(int count);
    void insertPicture(QTextCursor &cursor, const QImage &picture, const QString &resource, const QString &text);

    QTextCursor m_cursor;
    const QTextCharFormat m_title;
    const QTextCharFormat m_text;
    const QTextCharFormat m_name;
    const QTextCharFormat m_gap; ///< of the empty lines between items: half a line each
    const QTextCharFormat m_cellParam;
    const QTextCharFormat m_cellValue;
    const QTextCharFormat m_cellHeader;
};
