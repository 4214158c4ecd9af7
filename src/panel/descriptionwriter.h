#pragma once

#include <QCoreApplication>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QVector>

class QImage;
class QTextDocument;
class QTextTable;

/// Writes a description into a document in the formats of the property panels. The whole description is one edit: the
/// document is laid out once, when the writer is destroyed. Texts are plain text, never markup.
class DescriptionWriter
{
    Q_DECLARE_TR_FUNCTIONS(DescriptionWriter)
    Q_DISABLE_COPY(DescriptionWriter)

public:
    enum class Cell
    {
        Header,
        Param, ///< of the first column
        Value
    };

    /// \a document must be empty and outlive the writer.
    explicit DescriptionWriter(QTextDocument *document);
    ~DescriptionWriter();

    /// Adds the name of the described object and the empty lines after it.
    void addName(const QString &name);
    /// Adds a label, the value below it and the empty lines after them.
    void addItem(const QString &label, const QString &value);
    void addItem(const QString &label, bool yes);
    /// The value is a picture, \a text its textual equivalent. A null picture leaves the line empty.
    void addItem(const QString &label, const QImage &picture, const QString &text);
    /// Adds the caption of the next table.
    void addCaption(const QString &caption);

    /// Adds a table of centred texts over the whole width.
    QTextTable *addTable(int rows, const QVector<int> &columnPercents);
    void setCell(QTextTable *table, int row, int column, const QString &text, Cell kind);
    /// Sets the first row of a table. Line breaks in \a texts are kept.
    void setHeader(QTextTable *table, const QStringList &texts);
    /// Adds a picture, the name of the described object beside it and the empty lines after them.
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
    const QTextCharFormat m_gap; ///< of the empty lines between items, which have half the height
    const QTextCharFormat m_cellParam;
    const QTextCharFormat m_cellValue;
    const QTextCharFormat m_cellHeader;
};
