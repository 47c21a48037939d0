// The title bars of child windows where the style draws them illegibly.
#pragma once

#include <QProxyStyle>

namespace quorvanta {

// Fusion draws the buttons of an inactive window in black, whatever the palette: on dark windows
// they are drawn as those of an active one, in white, on the bar of an inactive one.
class TitleBarStyle : public QProxyStyle {
  public:
    TitleBarStyle();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

} // namespace quorvanta
