// An option whose long text runs over several lines.
#pragma once

#include <QRadioButton>

namespace quorvanta {

class WrappedRadioButton : public QRadioButton {
    Q_OBJECT

  public:
    explicit WrappedRadioButton(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }

  private:
    int TextLeft() const;
    QRect TextArea(int width) const;
};

} // namespace quorvanta
