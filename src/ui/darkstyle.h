// What the style draws illegibly on dark windows.
#pragma once

#include <QProxyStyle>

namespace quorvanta {

// Fusion draws the buttons of an inactive child window in black, whatever the palette: on dark
// windows they are drawn as those of an active one, in white, on the bar of an inactive one. The
// lines of its tables are darker than the windows: on dark ones they are lighter than their cells.
class DarkStyle : public QProxyStyle {
  public:
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;

    // Draws a widget, but not what lies on it.
    static void Dress(QWidget& widget);

  private:
    DarkStyle();
    bool Mends(const QStyleOption* option) const;
};

} // namespace quorvanta
