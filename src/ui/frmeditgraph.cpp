#include "ui/frmeditgraph.h"

#include "output/curvestyles.h"
#include "output/settings.h"
#include "ui/editbuttons.h"
#include "ui/qttext.h"
#include "ui/titlefield.h"
#include "ui/typefields.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>

#include <utility>

namespace quorvanta {

namespace {

QLineEdit* MakeField(QFormLayout& form, const QString& label, const QString& name,
                     const std::string& text) {
    auto* field = new QLineEdit(form.parentWidget());
    field->setObjectName(name);
    field->setText(ToQt(text));
    form.addRow(label, field);
    return field;
}

} // namespace

frmEditGraph::frmEditGraph(QWidget* parent)
    : frmEditGraph(
          CurrentGraphSettings(),
          [](const GraphSettings& settings) { return ApplySettings(settings); }, parent) {}

frmEditGraph::frmEditGraph(const GraphSettings& settings, Apply apply, QWidget* parent)
    : QDialog(parent), apply_(std::move(apply)), txtTitle_(new TitleField(settings.Title, this)) {
    setObjectName("frmEditGraph");
    setWindowTitle("Edit Graph");

    // In the order of the eye, which the Tab key follows.
    auto* form = new QFormLayout(this);
    form->addRow("&Title:", txtTitle_);
    auto* axes = new QHBoxLayout;
    axes->addWidget(MakeAxis("XAxis:", "X", settings.XAxis,
                             {"&Label:", "&Xmin:", "X&max:", "Xt&ick:"}, xAxis_));
    axes->addWidget(MakeAxis("YAxis:", "Y", settings.YAxis,
                             {"L&abel:", "&Ymin:", "Yma&x:", "Ytic&k:"}, yAxis_));
    form->addRow(axes);
    txtZLabel_ = MakeField(*form, "&ZAxis:", "txtZLabel", settings.ZLabel);
    type_ = std::make_unique<TypeFields>(*form, settings.Type, "Font &Bold", this);
    txtCurveWidth_ = MakeField(*form, "Curve Width:", "txtCurveWidth", settings.CurveWidth);
    cbCurveStyles_ = new QComboBox(this);
    cbCurveStyles_->setObjectName("cbCurveStyles");
    cbCurveStyles_->addItems({"Sixteen Colours", "Safe for Colour Blindness and Print"});
    cbCurveStyles_->setCurrentIndex(static_cast<int>(ChosenCurveStyles));
    form->addRow("C&urve Styles:", cbCurveStyles_);
    form->addRow(MakeEditButtons(*this, [this] { cmdOK_Click(); }));
}

frmEditGraph::~frmEditGraph() = default;

QWidget* frmEditGraph::MakeAxis(const QString& title, const QString& axis, const AxisTexts& texts,
                                const std::array<const char*, 4>& labels, AxisFields& fields) {
    const QString names[] = {"txt" + axis + "Label", "txt" + axis + "min", "txt" + axis + "max",
                             "txt" + axis + "tick"};
    constexpr int characters = 26; // the labels of most parameters
    auto* frame = new QGroupBox(title, this);
    auto* form = new QFormLayout(frame);
    // The limits come first and the label last.
    for (const std::size_t i : {1U, 2U, 3U, 0U}) {
        fields[i] = MakeField(*form, labels[i], names[i], texts(static_cast<int>(i)));
        if (i > 0)
            fields[i]->setLayoutDirection(Qt::LeftToRight); // a minus stands in front
        fields[i]->setMinimumWidth(characters * fontMetrics().averageCharWidth());
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
    if (!apply_(settings))
        return FocusRefused(*this);
    TakeCurveStyles();
    accept();
}

// They are those of all graphs, also of those in the windows behind.
void frmEditGraph::TakeCurveStyles() {
    const auto chosen = static_cast<CurveStyles>(cbCurveStyles_->currentIndex());
    if (chosen == ChosenCurveStyles)
        return;
    ChosenCurveStyles = chosen;
    for (QWidget* widget : QApplication::allWidgets())
        widget->update();
}

} // namespace quorvanta
