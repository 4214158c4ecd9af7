#pragma once

#include "schedules.h"

#include <QStyledItemDelegate>

/// Shows the shift of a day, given by its position in the schedule's list, and edits it in a combo box. The record is
/// not owned and must outlive the delegate.
class ShiftDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    ShiftDelegate(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    /// Number and hours of a shift in the editor's lists; times in seconds from midnight.
    [[nodiscard]] static QString shiftText(int position, qint32 start, qint32 finish);
    /// The same for a shift of the record; empty for a position outside its list.
    [[nodiscard]] QString shiftDescription(int position) const;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    /// Writes the operator's choice. Without a choice nothing is written: a day keeps a shift that is not in the list.
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

public slots:
    /// Commits the sending editor at once.
    void slotCurrentIndexChanged(int index);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    orvex::SCHEDULE_DATA *const m_schedule;
};
