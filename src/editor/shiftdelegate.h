#pragma once

#include "schedules.h"

#include <QStyledItemDelegate>

/// Shows and chooses the shift of a day by its position in the schedule's list. The record is not owned and must
/// outlive the delegate.
class ShiftDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    ShiftDelegate(orvex::SCHEDULE_DATA *schedule, QObject *parent);

    /// Number and hours of a shift, as every list of shifts in the editor says them; times are seconds from midnight.
    [[nodiscard]] static QString shiftText(int position, qint32 start, qint32 finish);
    /// The same for a shift of the record; empty for a position outside its list.
    [[nodiscard]] QString shiftDescription(int position) const;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    /// Writes what was chosen. An editor that was filled and left as it is writes nothing: a day whose shift is not in
    /// the list keeps it until somebody chooses.
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
    orvex::SCHEDULE_DATA *m_schedule;
};
