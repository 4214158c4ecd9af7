#pragma once

#include "tqguiglobals_export.h"

#include <QFont>
#include <QImage>
#include <QPixmap>
#include <QTextCharFormat>
#include <QTextTableFormat>

/// Formats for the documents of the property panels. They use the application's font and palette at the time of the
/// call.
class TQGUIGLOBALS_EXPORT PropertyPanelHelper
{
public:
    /// A label above a value.
    [[nodiscard]] static QTextCharFormat titleformat();
    /// A value.
    [[nodiscard]] static QTextCharFormat textformat();
    /// The name of the described object.
    [[nodiscard]] static QTextCharFormat nameformat();
    /// The caption of a table.
    [[nodiscard]] static QTextCharFormat tableTitleFormat();
    /// Header and first-column cells.
    [[nodiscard]] static QTextCharFormat tableCellParamFormat();
    /// All other cells of a table.
    [[nodiscard]] static QTextCharFormat tableCellValueFormat();
    /// A table of full width with thin lines; \a alignment applies to a narrower one.
    [[nodiscard]] static QTextTableFormat tableFormat(Qt::Alignment alignment);

    /// The photo of an employee, fitted into the size of \a photoType ("PT_PHOTO_PREVIEW": 96 × 128, any other:
    /// 240 × 320 device-independent pixels) in the resolution of the screen. For data that is not a picture or is too
    /// large (10 MB, 32 million pixels) it is a placeholder; never null.
    [[nodiscard]] static QPixmap pixmapByPhotoType(const QByteArray &data, const QString &photoType);

    /// A badge: \a text in \a foreground on a rounded field of \a background. A \a devicePixelRatio of 0 means the
    /// application's. For an empty text it is an empty badge of the same height.
    [[nodiscard]] static QImage createColoredText(const QString &text, const QColor &background,
                                                  const QColor &foreground, const QFont &font = QFont(),
                                                  qreal devicePixelRatio = 0);
};
