#include "ui/frmshowsmp.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/option_choice.h"
#include "core/setup.h"
#include "multcomp/family.h"
#include "ui/frmadjustmethod.h"
#include "ui/helptips.h"
#include "ui/qttext.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace quorvanta {

namespace {

// Marks the chosen option and lets the Tab key stop at it; a choice that the window does not have
// marks none.
template <class Options>
void CheckOption(Options& options, int chosen) {
    if (chosen < 0 || chosen >= static_cast<int>(options.size()))
        return;
    for (std::size_t i = 0; i < options.size(); ++i) {
        const bool isChosen = static_cast<int>(i) == chosen;
        options[i]->setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus);
        if (isChosen)
            options[i]->setChecked(true);
    }
}

} // namespace

frmShowSmp::frmShowSmp(QWidget* parent) : QDialog(parent) {
    setObjectName("frmShowSmp");
    setWindowTitle(tr("Options"));

    auto* columns = new QHBoxLayout;
    columns->addLayout(MakeLeftColumn());
    columns->addSpacing(fontMetrics().height() / 2);
    columns->addLayout(MakeRightColumn());

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* cmdOK = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmShowSmp::cmdOK_Click);

    auto* rows = new QVBoxLayout(this);
    rows->addLayout(columns);
    rows->addSpacing(fontMetrics().height() / 2);
    rows->addWidget(buttons);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

template <std::size_t Count>
frmShowSmp::OptionFrame<Count> frmShowSmp::MakeFrame(const char* frameName, const QString& title,
                                                     const QString& optionName) {
    OptionFrame<Count> made;
    made.Frame = new QGroupBox(title, this);
    made.Frame->setObjectName(frameName);
    auto* column = new QVBoxLayout(made.Frame);
    for (std::size_t i = 0; i < Count; ++i) {
        made.Options[i] = new QRadioButton(made.Frame);
        made.Options[i]->setObjectName(ControlName(optionName, static_cast<int>(i)));
        column->addWidget(made.Options[i]);
    }
    return made;
}

QVBoxLayout* frmShowSmp::MakeLeftColumn() {
    fraSamples_ = MakeFrame<3>("fraSamples", "No Of &Samples", "optSamples");
    constexpr const char* samples[] = {"One Sample", "Two Samples", ">Two Samples"};
    fraTails_ = MakeFrame<3>("fraTails", "No Of &Tails", "optTails");
    constexpr const char* tails[] = {"One-sided (non-inferiority, superiority)",
                                     "Two-sided (inequality)", "Two One-sided (equivalence)"};
    fraProcedure_ = MakeFrame<3>("fraProcedure", "&Procedure", "optProcedure");
    constexpr const char* procedures[] = {"Test", "Point Estimate", "Conf. Interval"};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto index = static_cast<i16>(i);
        fraSamples_.Options[i]->setText(samples[i]);
        connect(fraSamples_.Options[i], &QRadioButton::clicked, this,
                [this, index] { optSamples_Click(index); });
        fraTails_.Options[i]->setText(tails[i]);
        connect(fraTails_.Options[i], &QRadioButton::clicked, this,
                [this, index] { optTails_Click(index); });
        fraProcedure_.Options[i]->setText(procedures[i]);
        connect(fraProcedure_.Options[i], &QRadioButton::clicked, this,
                [this, index] { optProcedure_Click(index); });
    }
    chkLeftTail_ = new QCheckBox("&Reject in Left Tail", this);
    chkLeftTail_->setObjectName("chkLeftTail");
    connect(chkLeftTail_, &QCheckBox::clicked, this, &frmShowSmp::chkLeftTail_Click);

    auto* column = new QVBoxLayout;
    column->addWidget(fraProcedure_.Frame);
    column->addWidget(fraSamples_.Frame);
    column->addWidget(fraTails_.Frame);
    column->addWidget(chkLeftTail_);
    column->addStretch(1);
    return column;
}

QVBoxLayout* frmShowSmp::MakeRightColumn() {
    auto* column = new QVBoxLayout;
    lblParameter_ = new QLabel("P&arameter:", this);
    lblParameter_->setObjectName("lblParameter");
    lstParList_ = new QListWidget(this);
    lstParList_->setObjectName("lstParList");
    lblParameter_->setBuddy(lstParList_);
    lstParList_->setAccessibleName("Parameter"); // a list isn't called by its label
    connect(lstParList_, &QListWidget::currentRowChanged, this, &frmShowSmp::lstParList_Click);
    column->addWidget(lblParameter_);
    column->addWidget(lstParList_);

    for (std::size_t i = 0; i < chkCheck_.size(); ++i) {
        const auto index = static_cast<i16>(i);
        chkCheck_[i] = new QCheckBox(this);
        chkCheck_[i]->setObjectName(ControlName("chkCheck", index));
        connect(chkCheck_[i], &QCheckBox::clicked, this, [this, index] { chkCheck_Click(index); });
        column->addWidget(chkCheck_[i]);
    }

    cmdMethod_ = new QPushButton(this);
    cmdMethod_->setObjectName("cmdMethod");
    connect(cmdMethod_, &QPushButton::clicked, this, &frmShowSmp::cmdMethod_Click);
    column->addWidget(cmdMethod_);

    column->addSpacing(fontMetrics().height() / 2);
    lblInterchangeable_ = new QLabel("&Interchangeable Parameters:", this);
    lblInterchangeable_->setObjectName("lblInterchangeable");
    column->addWidget(lblInterchangeable_);
    for (std::size_t group = 0; group < fraIntPar_.size(); ++group) {
        const auto groupNo = static_cast<i16>(group);
        fraIntPar_[group] = MakeFrame<3>(qPrintable(ControlName("fraIntPar", groupNo)), QString(),
                                         QString("optIntPar%1").arg(groupNo));
        for (std::size_t option = 0; option < 3; ++option) {
            const auto optionNo = static_cast<i16>(option);
            connect(fraIntPar_[group].Options[option], &QRadioButton::clicked, this,
                    [this, groupNo, optionNo] { optIntPar_Click(groupNo, optionNo); });
        }
        column->addWidget(fraIntPar_[group].Frame);
    }

    fraInterim_ = MakeFrame<6>("fraInterim", "&Number Of Interim Analyses", "optInterim");
    for (std::size_t i = 0; i < fraInterim_.Options.size(); ++i) {
        const auto index = static_cast<i16>(i);
        fraInterim_.Options[i]->setText(QString::number(index));
        connect(fraInterim_.Options[i], &QRadioButton::clicked, this,
                [this, index] { optInterim_Click(index); });
    }
    column->addWidget(fraInterim_.Frame);
    column->addStretch(1);
    return column;
}

void frmShowSmp::Refresh() {
    setWindowTitle(ToQt(IsTest != False ? TestName : DistrName));
    RefreshSamplesAndTails();
    RefreshDistribution();
    RefreshChecks();
    RefreshGroups();
    CheckOption(fraInterim_.Options, NoOfInterim);
    fraInterim_.Frame->setVisible(InterimShown);
    cmdMethod_->setText(ToQt("Adjustment &Method: " + AdjustMethodName(AdjustMethod)));
    cmdMethod_->setVisible(!AdjustMethodNames().empty());
    ExplainOptions();
}

void frmShowSmp::ExplainOptions() {
    constexpr i32 optionWindow = 22;
    constexpr i32 tails = 40;
    Explain(*fraProcedure_.Frame, {optionWindow}, "Procedure");
    Explain(*fraSamples_.Frame, {optionWindow}, "No Of Samples");
    Explain(*fraTails_.Frame, {optionWindow}, "No Of Tails");
    Explain(*lstParList_, {optionWindow}, "Parameter");
    Explain(*cmdMethod_, {optionWindow}, "Adjustment Method");
    for (QRadioButton* option : fraTails_.Options)
        Explain(*option, {tails}, FromQt(option->text()));
    Explain(*chkLeftTail_, {tails}, FromQt(chkLeftTail_->text()));
    for (i16 i = 0; i < NoOfCheck; ++i) {
        QCheckBox& box = *chkCheck_[static_cast<std::size_t>(i)];
        if (!ExplainOption(box, FromQt(box.text())))
            Explain(box, {optionWindow}, "Check boxes");
    }
    for (i16 group = 0; group < NoOfIntPar; ++group) {
        OptionFrame<3>& frame = fraIntPar_[static_cast<std::size_t>(group)];
        Explain(*frame.Frame, {optionWindow}, "Interchangeable Parameters");
        // "H1:" over "Mean 2" makes the name of the parameter.
        const std::string caption = IntParCaption(IntParList(group));
        for (QRadioButton* option : frame.Options) {
            const std::string name = FromQt(option->text());
            if (!ExplainOption(*option, caption + " " + name))
                ExplainOption(*option, name);
        }
    }
}

void frmShowSmp::RefreshSamplesAndTails() {
    for (i16 i = 0; i < 3; ++i) {
        const auto at = static_cast<std::size_t>(i);
        fraSamples_.Options[at]->setEnabled(SamplesOffered(i + 1));
        fraTails_.Options[at]->setEnabled(TailsOffered(i + 1));
    }
    CheckOption(fraSamples_.Options, NoOfSamples - 1);
    CheckOption(fraTails_.Options, NoOfTails - 1);
    fraSamples_.Frame->setVisible(SamplesShown);
    fraTails_.Frame->setVisible(TailsShown);
    chkLeftTail_->setChecked(LeftTail != False);
    chkLeftTail_->setEnabled(LeftTailOffered);
    chkLeftTail_->setVisible(TailsShown);
}

void frmShowSmp::RefreshDistribution() {
    CheckOption(fraProcedure_.Options, ProcedureNo);
    fraProcedure_.Frame->setVisible(IsTest == False);
    const bool hasList = !OfferedParLists().empty();
    lblParameter_->setVisible(hasList);
    lstParList_->setVisible(hasList);
    if (!hasList)
        return;
    const QSignalBlocker quiet(lstParList_);
    FillParList();
    lstParList_->setCurrentRow(ChosenParList());
}

void frmShowSmp::FillParList() {
    QStringList parameters;
    for (const std::string_view parameter : OfferedParLists())
        parameters << ToQt(parameter);
    QStringList shown;
    for (int i = 0; i < lstParList_->count(); ++i)
        shown << lstParList_->item(i)->text();
    // A list must not be emptied while it tells of a choice in it.
    if (shown == parameters)
        return;
    lstParList_->clear();
    lstParList_->addItems(parameters);
    const int frame = 2 * lstParList_->frameWidth();
    lstParList_->setFixedHeight(lstParList_->sizeHintForRow(0) * lstParList_->count() + frame);
    lstParList_->setMinimumWidth(lstParList_->sizeHintForColumn(0) + frame);
}

void frmShowSmp::RefreshChecks() {
    for (i16 i = 0; i < static_cast<i16>(chkCheck_.size()); ++i) {
        QCheckBox& box = *chkCheck_[static_cast<std::size_t>(i)];
        if (i < NoOfCheck) {
            box.setText(ToQt(CheckLabel(CheckList(i))));
            box.setChecked(CheckValue(CheckList(i)) != 0);
            box.setEnabled(CheckEnabled(i));
        }
        box.setVisible(i < NoOfCheck);
    }
}

void frmShowSmp::RefreshGroups() {
    lblInterchangeable_->setVisible(NoOfIntPar > 0);
    for (i16 group = 0; group < static_cast<i16>(fraIntPar_.size()); ++group) {
        OptionFrame<3>& frame = fraIntPar_[static_cast<std::size_t>(group)];
        if (group < NoOfIntPar) {
            const i16 kind = IntParList(group);
            frame.Frame->setTitle(ToQt(IntParCaption(kind)));
            for (i16 option = 0; option < 3; ++option) {
                QRadioButton& button = *frame.Options[static_cast<std::size_t>(option)];
                const QString text = ToQt(IntParOption(option, kind));
                button.setText(text);
                button.setEnabled(IntParOptionEnabled(option, group));
                button.setVisible(!text.isEmpty());
            }
            CheckOption(frame.Options, IntParValue(kind));
        }
        frame.Frame->setVisible(group < NoOfIntPar);
    }
    lblInterchangeable_->setBuddy(fraIntPar_[0].Options[0]);
}

void frmShowSmp::optSamples_Click(i16 index) {
    ChooseSamples(static_cast<i16>(index + 1));
}

void frmShowSmp::optTails_Click(i16 index) {
    ChooseTails(static_cast<i16>(index + 1));
}

void frmShowSmp::chkLeftTail_Click() {
    ChooseLeftTail(chkLeftTail_->isChecked());
}

void frmShowSmp::optProcedure_Click(i16 index) {
    ChooseProcedure(index);
}

void frmShowSmp::lstParList_Click() {
    if (lstParList_->currentRow() >= 0)
        ChooseParList(static_cast<i16>(lstParList_->currentRow()));
}

void frmShowSmp::chkCheck_Click(i16 index) {
    ChooseCheck(index, chkCheck_[static_cast<std::size_t>(index)]->isChecked());
}

void frmShowSmp::optIntPar_Click(i16 group, i16 option) {
    ChooseIntPar(group, option);
}

void frmShowSmp::optInterim_Click(i16 index) {
    ChooseInterim(index);
}

void frmShowSmp::cmdMethod_Click() {
    if (const auto method = frmAdjustMethod(this, AdjustMethod).Ask())
        ChooseAdjustMethod(*method);
}

void frmShowSmp::cmdOK_Click() {
    AcceptOptions();
}

void frmShowSmp::reject() {
    QDialog::reject();
    CancelOptions();
}

} // namespace quorvanta
