// The area of the child windows. While none is open it says where to begin.
#pragma once

#include <QMdiArea>

namespace quorvanta {

class MdiArea : public QMdiArea {
    Q_OBJECT

  public:
    using QMdiArea::QMdiArea;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quorvanta
