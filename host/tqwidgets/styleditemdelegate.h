#pragma once

#include "tqwidgets_export.h"

#include <QMargins>
#include <QStyledItemDelegate>

/// Draws the rows of an object tree (`orvex::LocalStorage::model`): in the first column the icon and the name of the
/// object instead of its identifier.
class TQWIDGETS_EXPORT StyledItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit StyledItemDelegate(QObject *parent = nullptr);

    /// Sets the space around the contents of a cell, in pixels, in addition to the style's; 0 at first.
    void setMargins(int left, int top, int right, int bottom);
    [[nodiscard]] QMargins margins() const { return m_margins; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QMargins m_margins;
};
