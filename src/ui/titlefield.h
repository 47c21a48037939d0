// The field of a title: a line of text for each of its lines.
#pragma once

#include <QPlainTextEdit>

#include <string>
#include <vector>

namespace quorvanta {

class TitleField : public QPlainTextEdit {
    Q_OBJECT

  public:
    TitleField(const std::vector<std::string>& lines, QWidget* parent);

    std::vector<std::string> Lines() const;

    QSize sizeHint() const override;
};

} // namespace quorvanta
