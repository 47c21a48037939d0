#include "ui/colors.h"

#include <algorithm>
#include <cmath>

namespace quorvanta {

namespace {

constexpr QRgb Table[] = {0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000,
                          0xC0C0C0, 0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF,
                          0xFFFF00, 0xFFFFFF,
                          // of Okabe and Ito: see output/curvestyles.h
                          0x0072B2, 0xD55E00, 0x009E73, 0xCC79A7, 0xE69F00, 0x56B4E9};

f64 Luminance(const QColor& color) {
    const auto linear = [](float component) {
        const auto c = static_cast<f64>(component);
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

QColor Lighter(const QColor& color) {
    const auto lift = [](int component) { return component + (255 - component) / 8 + 1; };
    return {std::min(lift(color.red()), 255), std::min(lift(color.green()), 255),
            std::min(lift(color.blue()), 255)};
}

} // namespace

bool IsDark(const QColor& background) {
    return background.lightness() < 128;
}

f64 Contrast(const QColor& a, const QColor& b) {
    const f64 la = Luminance(a);
    const f64 lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor TableColor(i16 number, const QColor& ink, const QColor& paper) {
    if (number == 0)
        return ink;
    QColor color = QColor::fromRgb(Table[static_cast<std::size_t>(number) % std::size(Table)]);
    constexpr f64 distinct = 4.5;
    const bool isDarkPaper = Luminance(paper) < Luminance(ink);
    while (isDarkPaper && Contrast(color, paper) < distinct && color != Qt::white)
        color = Lighter(color);
    return color;
}

} // namespace quorvanta
