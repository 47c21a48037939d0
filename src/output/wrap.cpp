#include "output/statement.h" // IWYU pragma: associated
#include "output/statement_words.h"

#include <algorithm>

namespace quorvanta {

namespace {

constexpr std::size_t LineLength = 80;

// Characters of a UTF-8 text.
std::size_t Length(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
}

f64 WidestLine(std::string_view text, const std::function<f64(std::string_view)>& textWidth) {
    f64 widest = 0;
    while (true) {
        const std::size_t end = text.find(NewLine);
        widest = std::max(widest, textWidth(text.substr(0, end)));
        if (end == std::string_view::npos)
            return widest;
        text.remove_prefix(end + NewLine.size());
    }
}

} // namespace

WrappedText WrapText(std::string_view text, const std::function<f64(std::string_view)>& textWidth) {
    const std::string single = SingleBlanks(text);
    WrappedText wrapped;
    wrapped.Lines = 1;
    std::size_t column = 0;
    for (std::size_t at = 0; at < single.size();) {
        const std::size_t end = std::min(single.find(' ', at), single.size());
        const std::string word = single.substr(at, end - at);
        if (at > 0) {
            const std::size_t mark = LineLength * static_cast<std::size_t>(wrapped.Lines);
            const bool passes = column + 1 + Length(word) > mark;
            wrapped.Text += passes ? NewLine : " ";
            wrapped.Lines = static_cast<i16>(wrapped.Lines + (passes ? 1 : 0));
            ++column;
        }
        wrapped.Text += word;
        column += Length(word);
        at = end + 1;
    }
    if (column < LineLength)
        wrapped.Text.append(LineLength - column, ' ');
    wrapped.MaxWidth = WidestLine(wrapped.Text, textWidth);
    return wrapped;
}

} // namespace quorvanta
