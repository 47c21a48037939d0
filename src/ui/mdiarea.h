// The area of the child windows. While none is open it says where to begin.
#pragma once

#include <QMdiArea>

namespace quorvanta {

class MdiArea : public QMdiArea {
    Q_OBJECT

  public:
    explicit MdiArea(QWidget* parent);

  protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void TakeBackground();
};

} // namespace quorvanta
