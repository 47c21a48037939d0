// frmCalc: one value at a time. A column of labelled values, one of which is the unknown: the user
// types the others, presses the label of the one wanted and reads the result in its place.
#pragma once

#include "core/types.h"
#include "ui/childwindow.h"

#include <array>
#include <vector>

class QGridLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;

namespace quorvanta {

class ParLabelButton;
class ValueBox;

class frmCalc : public ChildWindow {
    Q_OBJECT

  public:
    frmCalc(i16 windowNo, i16 analysisNo);

    void Refresh() override;

    void cmdParLabel_Click(i16 i);
    void cmdParLabel_MouseUp(const QPoint& at);
    void txtParValue_Change(i16 i);
    void txtParValue_GotFocus(i16 i);
    void txtParValue_DblClick(i16 i);
    void txtParValue_KeyDown(i16 i);
    void lblHead1_MouseUp(const QPoint& at);
    void Form_MouseUp(const QPoint& at);

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void MakeRow(QGridLayout& grid, i16 i);
    void ShowMarks();
    void OpenOutputMenu(const QPoint& at);
    std::vector<ParLabelButton*> LabelsWithMnemonic(const QKeyEvent& key) const;

    QLabel* lblHead1_;
    QLabel* lblHint_;
    QLabel* lblGetCalc_;
    QLineEdit* txtHide_;
    std::array<ParLabelButton*, MaxPar + 1> cmdParLabel_{};
    std::array<ValueBox*, MaxPar + 1> txtParValue_{};
    i16 shownPar_ = -1; // rows when the window last took its size; -1: never
};

} // namespace quorvanta
