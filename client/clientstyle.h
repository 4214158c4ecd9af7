#pragma once

#include <QProxyStyle>

/// Fusion, with icons on selected rows drawn as they are: our selection is pale enough, a tint would wash them out.
class ClientStyle final : public QProxyStyle
{
    Q_OBJECT

public:
    ClientStyle();

    [[nodiscard]] QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                              const QStyleOption *option) const override;
    /// The arrow of a tool bar that is too narrow comes from our theme: Fusion's own is black on dark, too.
    [[nodiscard]] QIcon standardIcon(StandardPixmap which, const QStyleOption *option,
                                     const QWidget *widget) const override;
};
