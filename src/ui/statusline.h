// The bar at the foot of the main window. A message that is longer than the bar ends in an
// ellipsis and is told whole where it is pointed at.
#pragma once

#include <QStatusBar>

namespace quorvanta {

class StatusLine : public QStatusBar {
    Q_OBJECT

  public:
    explicit StatusLine(QWidget* parent);

    // The message as far as there is room for it.
    QString ShownMessage() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QRect MessageRect() const;
    void Describe();
};

} // namespace quorvanta
