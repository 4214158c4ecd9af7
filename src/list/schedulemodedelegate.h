#pragma once

#include <QAbstractItemDelegate>

/// Shows schedule types by name and edits them in a combo box.
class ScheduleModeDelegate final : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    explicit ScheduleModeDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    [[nodiscard]] static QStyleOptionViewItem itemOption(const QStyleOptionViewItem &option, const QModelIndex &index);
};
