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
};
