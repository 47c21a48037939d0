// frmShowSmp: the options of the test or distribution. It draws what the state offers and hands
// each choice to the engine, which lays the options out anew.
#pragma once

#include "core/types.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace quorvanta {

class frmShowSmp : public QDialog {
    Q_OBJECT

  public:
    explicit frmShowSmp(QWidget* parent);

    // Takes what is offered and what is chosen from the state.
    void Refresh();

    void optSamples_Click(i16 index);
    void optTails_Click(i16 index);
    void chkLeftTail_Click();
    void optProcedure_Click(i16 index);
    void lstParList_Click();
    void chkCheck_Click(i16 index);
    void optIntPar_Click(i16 group, i16 option);
    void optInterim_Click(i16 index);
    void cmdMethod_Click();
    void cmdOK_Click();

    // Esc and the close box give the options up.
    void reject() override;

  private:
    template <std::size_t Count>
    struct OptionFrame {
        QGroupBox* Frame = nullptr;
        std::array<QRadioButton*, Count> Options{};
    };

    template <std::size_t Count>
    OptionFrame<Count> MakeFrame(const char* frameName, const QString& title,
                                 const QString& optionName);
    QVBoxLayout* MakeLeftColumn();
    QVBoxLayout* MakeRightColumn();
    void RefreshSamplesAndTails();
    void RefreshDistribution();
    void FillParList();
    void RefreshChecks();
    void RefreshGroups();
    void ExplainOptions();

    OptionFrame<3> fraSamples_;
    OptionFrame<3> fraTails_;
    OptionFrame<3> fraProcedure_;
    OptionFrame<6> fraInterim_;
    std::array<OptionFrame<3>, 4> fraIntPar_;
    QCheckBox* chkLeftTail_ = nullptr;
    QLabel* lblParameter_ = nullptr;
    QListWidget* lstParList_ = nullptr;
    std::array<QCheckBox*, 5> chkCheck_{};
    QLabel* lblInterchangeable_ = nullptr;
    QPushButton* cmdMethod_ = nullptr;
};

} // namespace quorvanta
