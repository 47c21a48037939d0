#include "ui/frmeditgraph.h"

#include "output/settings.h"
#include "ui/editbuttons.h"
#include "ui/qttext.h"
#include "ui/titlefield.h"
#include "ui/typefields.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>

namespace quorvanta {

frmEditGraph::frmEditGraph(QWidget* parent)
    : QDialog(parent), txtZLabel_(new QLineEdit(this)), txtCurveWidth_(new QLineEdit(this)) {
    setObjectName("frmEditGraph");
    setWindowTitle("Edit Graph");
    const GraphSettings settings = CurrentGraphSettings();
    txtTitle_ = new TitleField(settings.Title, this);
    txtZLabel_->setObjectName("txtZLabel");
    txtZLabel_->setText(ToQt(settings.ZLabel));
    txtCurveWidth_->setObjectName("txtCurveWidth");
    txtCurveWidth_->setText(ToQt(settings.CurveWidth));

    auto* form = new QFormLayout(this);
    form->addRow("&Title:", txtTitle_);
    auto* axes = new QHBoxLayout;
    axes->addWidget(MakeAxis("XAxis:", "X", settings.XAxis,
                             {"&Label:", "&Xmin:", "X&max:", "Xt&ick:"}, xAxis_));
    axes->addWidget(MakeAxis("YAxis:", "Y", settings.YAxis,
                             {"L&abel:", "&Ymin:", "Yma&x:", "Ytic&k:"}, yAxis_));
    form->addRow(axes);
    form->addRow("&ZAxis:", txtZLabel_);
    type_ = std::make_unique<TypeFields>(*form, settings.Type, "Font &Bold", this);
    form->addRow("Curve Width:", txtCurveWidth_);
    form->addRow(MakeEditButtons(*this, [this] { cmdOK_Click(); }));
}

frmEditGraph::~frmEditGraph() = default;

QWidget* frmEditGraph::MakeAxis(const QString& title, const QString& axis, const AxisTexts& texts,
                                const std::array<const char*, 4>& labels, AxisFields& fields) {
    const QString names[] = {"txt" + axis + "Label", "txt" + axis + "min", "txt" + axis + "max",
                             "txt" + axis + "tick"};
    auto* frame = new QGroupBox(title, this);
    auto* form = new QFormLayout(frame);
    // The limits come first and the label last.
    for (const std::size_t i : {1U, 2U, 3U, 0U}) {
        fields[i] = new QLineEdit(frame);
        fields[i]->setObjectName(names[i]);
        fields[i]->setText(ToQt(texts(static_cast<int>(i))));
        form->addRow(labels[i], fields[i]);
    }
    return frame;
}

frmEditGraph::AxisTexts frmEditGraph::TextsOf(const AxisFields& fields) {
    AxisTexts texts;
    for (std::size_t i = 0; i < fields.size(); ++i)
        texts(static_cast<int>(i)) = FromQt(fields[i]->text());
    return texts;
}

void frmEditGraph::cmdOK_Click() {
    GraphSettings settings;
    settings.Title = txtTitle_->Lines();
    settings.XAxis = TextsOf(xAxis_);
    settings.YAxis = TextsOf(yAxis_);
    settings.ZLabel = FromQt(txtZLabel_->text());
    settings.Type = type_->Settings();
    settings.CurveWidth = FromQt(txtCurveWidth_->text());
    if (ApplySettings(settings))
        accept();
}

} // namespace quorvanta
