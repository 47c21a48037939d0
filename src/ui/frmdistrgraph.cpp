#include "ui/frmdistrgraph.h"

#include "core/analysis_state.h"
#include "output/printcopy.h"
#include "ui/frmeditgraph.h"
#include "ui/plotpicture.h"
#include "ui/qttext.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvanta {

frmDistrGraph::frmDistrGraph(QWidget* parent)
    : QDialog(parent), picDistrGraph_(new PlotPicture("picDistrGraph", this)) {
    setObjectName("frmDistrGraph");
    setWindowTitle("Distribution Graph");
    picDistrGraph_->setAccessibleName(tr("Distribution graph"));
    connect(picDistrGraph_, &PlotPicture::DblClick, this, &frmDistrGraph::cmdEdit_Click);
    auto* column = new QVBoxLayout(this);
    column->addWidget(MakeOptions());
    column->addWidget(picDistrGraph_, 1);
    column->addLayout(MakeButtons());
}

QWidget* frmDistrGraph::MakeOptions() {
    auto* options = new QWidget(this);
    auto* row = new QHBoxLayout(options);
    row->setContentsMargins(0, 0, 0, 0);
    for (const DistrPlotOption& option : AllDistrPlotOptions()) {
        auto* button = new QRadioButton(option.Caption, options);
        button->setObjectName(ControlName("optPlotDistr", option.Kind));
        connect(button, &QRadioButton::toggled, this, [this, kind = option.Kind](bool isOn) {
            if (isOn)
                optPlotDistr_Click(kind);
        });
        row->addWidget(button);
        optPlotDistr_.push_back({option.Kind, button});
    }
    row->addStretch(1);
    return options;
}

QHBoxLayout* frmDistrGraph::MakeButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    const auto add = [this, row](const char* name, const char* caption, auto handler) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, handler);
        row->addWidget(button);
    };
    add("cmdPrint", "&Print", &frmDistrGraph::cmdPrint_Click);
    add("cmdCopy", "C&opy", &frmDistrGraph::cmdCopy_Click);
    add("cmdSave", "&Save", &frmDistrGraph::cmdSave_Click);
    add("cmdEdit", "&Edit", &frmDistrGraph::cmdEdit_Click);
    new QShortcut(QKeySequence::Print, this, this, &frmDistrGraph::cmdPrint_Click);
    new QShortcut(QKeySequence::Copy, this, this, &frmDistrGraph::cmdCopy_Click);
    new QShortcut(QKeySequence::Save, this, this, &frmDistrGraph::cmdSave_Click);
    return row;
}

void frmDistrGraph::Refresh() {
    const auto offered = DistrPlotOptions();
    const DistrPlotKind current = CurrentDistrPlot();
    for (const Option& option : optPlotDistr_) {
        const QSignalBlocker quiet(option.Button);
        option.Button->setVisible(std::ranges::find(offered, option.Kind, &DistrPlotOption::Kind) !=
                                  offered.end());
        option.Button->setChecked(option.Kind == current);
    }
    picDistrGraph_->Draw(DistrGraph(), ToQt(DistrGraphInWords()));
}

void frmDistrGraph::optPlotDistr_Click(DistrPlotKind kind) {
    ChooseDistrPlot(kind);
    Refresh();
}

void frmDistrGraph::cmdEdit_Click() {
    if (frmEditGraph(DistrGraphSettings(), ApplyDistrGraphSettings, this).exec() == Accepted)
        Refresh();
}

void frmDistrGraph::cmdPrint_Click() {
    OutputDistrGraph(OutputAction::Print);
}

void frmDistrGraph::cmdCopy_Click() {
    OutputDistrGraph(OutputAction::Copy);
}

void frmDistrGraph::cmdSave_Click() {
    OutputDistrGraph(OutputAction::Save);
}

} // namespace quorvanta
