// The pictures of buttons and menus: strokes in the colours of the user's theme.
#pragma once

#include <QColor>
#include <QIcon>
#include <QProxyStyle>
#include <QString>

namespace kalvo {

// The drawing of that name under data/icons/pictogrammes, at any size. Strokes without a
// colour of their own take `ink`, by default that of the theme's texts as it is when they are
// drawn, so that they show on light and dark. Of a drawing only absolute paths made of
// M L H V C Z and circles are understood.
[[nodiscard]] QIcon pictogram(const QString& name, const QColor& ink = {});

// The toolkit's own style with our pictures in message boxes and none on dialog buttons.
class PictogramStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                       const QWidget* widget) const override;
};

}  // namespace kalvo
