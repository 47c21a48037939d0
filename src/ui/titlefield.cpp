#include "ui/titlefield.h"

#include "ui/qttext.h"

namespace quorvanta {

TitleField::TitleField(const std::vector<std::string>& lines, QWidget* parent)
    : QPlainTextEdit(parent) {
    setObjectName("txtTitle");
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    QStringList text;
    for (const std::string& line : lines)
        text << ToQt(line);
    setPlainText(text.join('\n'));
}

std::vector<std::string> TitleField::Lines() const {
    std::vector<std::string> lines;
    for (const QString& line : toPlainText().split('\n'))
        lines.push_back(FromQt(line));
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

QSize TitleField::sizeHint() const {
    constexpr int columns = 44;
    constexpr int rows = 3;
    const int scrollBar = fontMetrics().height(); // of a long line
    const int frame = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return {columns * fontMetrics().averageCharWidth() + frame,
            rows * fontMetrics().lineSpacing() + frame + scrollBar};
}

} // namespace quorvanta
