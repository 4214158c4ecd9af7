#pragma once

#include <QStyledItemDelegate>

class QDateTime;

/// Shows and edits a time of day (seconds from midnight) or a date (seconds since the epoch, UTC). Each change is
/// written to the model at once.
class DateTimeDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum Format
    {
        DateTimeFormat = 0, ///< seconds since the epoch; the editor keeps only the date
        TimeFormat = 1, ///< seconds from midnight
    };

    /// Times of day as "hh:mm:ss".
    explicit DateTimeDelegate(QObject *parent = nullptr);
    /// Times of day have the locale's format until `setTimeSpec()`.
    DateTimeDelegate(Format format, QObject *parent);

    /// Sets the format of times of day, as in `QTime::toString()`.
    void setTimeSpec(const QString &displayFormat);

    [[nodiscard]] QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

public slots:
    /// Commits the sending editor at once.
    void slotDateTimeChanged(const QDateTime &dateTime);

private:
    Format m_format = TimeFormat;
    QString m_displayFormat;
};
