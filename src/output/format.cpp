#include "output/format.h"

#include "core/general.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace quorvanta {

namespace {

// The text of 15 significant digits as digits and the power of ten of the first of them.
struct Decimal {
    std::string Digits;
    int Exponent;
};

Decimal ToDecimal(f64 x) {
    constexpr int significant = 15;
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), x,
                                            std::chars_format::scientific, significant - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t mark = text.find('e');
    Decimal decimal{std::string(text.substr(0, mark)), 0};
    std::erase(decimal.Digits, '.');
    const char sign = text[mark + 1];
    std::from_chars(text.data() + mark + 2, text.data() + text.size(), decimal.Exponent);
    if (sign == '-')
        decimal.Exponent = -decimal.Exponent;
    return decimal;
}

// The digits of |x| with the given number of decimals, rounded half away from zero; at least one
// stands before the decimals.
std::string FixedDigits(f64 x, std::size_t decimals) {
    const Decimal decimal = ToDecimal(std::fabs(x));
    std::string digits = decimal.Digits;
    if (decimal.Exponent < 0)
        digits.insert(0, static_cast<std::size_t>(-decimal.Exponent), '0');
    const std::size_t whole = static_cast<std::size_t>(std::max(decimal.Exponent, 0)) + 1;
    const std::size_t kept = whole + decimals;
    if (digits.size() <= kept) {
        digits.append(kept - digits.size(), '0');
        return digits;
    }
    const bool up = digits[kept] >= '5';
    digits.resize(kept);
    if (!up)
        return digits;
    std::size_t i = digits.size();
    while (i > 0 && digits[i - 1] == '9')
        digits[--i] = '0';
    if (i == 0)
        digits.insert(0, 1, '1');
    else
        ++digits[i - 1];
    return digits;
}

template <class Float>
std::string ShortText(Float x, int significant) {
    if (x == 0)
        return "0";
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), x,
                                            std::chars_format::general, significant);
    std::string text(buffer.data(), end);
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return text;
}

constexpr std::size_t MostColumnDecimals = 7;

// The decimals that a short text counts in a column.
std::size_t TextDecimals(std::string_view text) {
    if (text.find("E+") != std::string_view::npos)
        return 0;
    const std::size_t mark = text.find("E-");
    if (mark != std::string_view::npos) {
        std::size_t exponent = 0;
        std::from_chars(text.data() + mark + 2, text.data() + text.size(), exponent);
        return exponent;
    }
    const std::size_t point = text.find('.');
    return point == std::string_view::npos ? 0 : text.size() - point - 1;
}

// The same of a value; one with more decimals than a column has is rounded to those first.
std::size_t ColumnDecimals(f32 x) {
    const std::size_t decimals = TextDecimals(Str(x));
    if (decimals < MostColumnDecimals)
        return decimals;
    const std::string rounded = Str(static_cast<f32>(RoundPow10(f64{x}, -7)));
    if (rounded.find('E') != std::string::npos)
        return MostColumnDecimals;
    return TextDecimals(rounded);
}

} // namespace

std::string Str(f32 x) {
    return ShortText(x, 7);
}

std::string Str(f64 x) {
    return ShortText(x, 15);
}

std::string Format(f64 x, std::string_view picture) {
    if (!std::isfinite(x))
        return Str(x);
    constexpr std::string_view placeholders = "#0.";
    const std::size_t begin = std::min(picture.find_first_of(placeholders), picture.size());
    const std::size_t end = picture.find_last_of(placeholders) + 1;
    const std::string_view body = end > begin ? picture.substr(begin, end - begin) : "";
    const std::size_t point = std::min(body.find('.'), body.size());
    const std::string_view wholePicture = body.substr(0, point);
    const std::string_view fractionPicture =
        point < body.size() ? body.substr(point + 1) : std::string_view();

    const std::string digits = FixedDigits(x, fractionPicture.size());
    std::string whole = digits.substr(0, digits.size() - fractionPicture.size());
    std::string fraction = digits.substr(whole.size());
    const bool negative = x < 0 && digits.find_first_not_of('0') != std::string::npos;

    const std::size_t wholeLeast =
        wholePicture.size() - std::min(wholePicture.find('0'), wholePicture.size());
    whole.erase(0, whole.find_first_not_of('0'));
    if (whole.size() < wholeLeast)
        whole.insert(0, wholeLeast - whole.size(), '0');
    const std::size_t fractionLeast = fractionPicture.rfind('0') + 1;
    while (fraction.size() > fractionLeast && fraction.back() == '0')
        fraction.pop_back();
    if (whole.empty() && fraction.empty())
        whole = "0";

    std::string text(picture.substr(0, begin));
    if (negative)
        text += '-';
    text += whole;
    if (!fraction.empty())
        text += '.' + fraction;
    text += picture.substr(std::max(begin, end));
    return text;
}

std::string FormatBySize(f64 x) {
    const f64 size = std::fabs(x);
    if (size == std::trunc(size) || size < 5e-6)
        return "0";
    if (size < 1)
        return "0.0####";
    if (size < 10)
        return "0.0###";
    if (size < 100)
        return "0.0##";
    if (size < 1000)
        return "0.0#";
    if (size < 10000)
        return "0.0";
    return "0";
}

std::string FormatByRange(i16 n, f32 min, f32 max) {
    f32 step = 1;
    if (min != max)
        step = static_cast<f32>(std::fabs((f64{max} - f64{min}) / n));
    if (step >= 100.0F)
        return "#########0 ";
    if (step >= 1.0F)
        return "#######0.0 ";
    if (step >= 0.1F)
        return "######0.00 ";
    if (step >= 0.01F)
        return "#####0.000 ";
    if (step >= 0.001F)
        return "####0.0000 ";
    if (step >= 0.0001F)
        return "###0.00000 ";
    if (step >= 0.00001F)
        return "##0.000000 ";
    if (step >= 0.000001F)
        return "#0.0000000 ";
    return "0.00000000 ";
}

std::string FormatForColumn(int first, int last, const Array1<f32>& values) {
    std::size_t decimals = 0;
    for (int i = first; i <= last; ++i)
        decimals = std::max(decimals, ColumnDecimals(values(i)));
    if (decimals == 0)
        return "########## ";
    return std::string(8 - decimals, '#') + "0." + std::string(decimals, '0') + ' ';
}

std::string FormatCell(f64 x, std::string_view picture) {
    const std::string text = std::fabs(x) == NoValue ? "- " : Format(x, picture);
    const std::size_t padding = picture.size() - std::min(text.size(), picture.size());
    return std::string(padding, ' ') + text;
}

f64 RoundPow10(f64 x, i16 p) {
    const f64 unit = std::pow(10.0, p);
    return Int(x / unit + 0.5) * unit;
}

} // namespace quorvanta
