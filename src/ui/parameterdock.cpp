#include "ui/parameterdock.h"

#include "core/analysis_state.h"
#include "core/general.h"
#include "core/grids.h"
#include "ui/helptips.h"
#include "ui/mnemoniclabel.h"
#include "ui/qttext.h"
#include "ui/valuebox.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvanta {

ParameterDock::ParameterDock(const QString& name, QWidget* parent)
    : QDockWidget(tr("Parameters"), parent), scroll_(new QScrollArea(this)) {
    setObjectName(name);
    setFeatures(QDockWidget::DockWidgetMovable);
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    hide();
}

QVBoxLayout* ParameterDock::LayOut(QWidget* inputs) {
    inputs_ = inputs;
    scroll_->setWidget(inputs_);
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, scroll_, [this](QWidget*, QWidget* focused) {
        if (focused != nullptr && inputs_->isAncestorOf(focused))
            scroll_->ensureWidgetVisible(focused);
    });
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    column->addWidget(scroll_, 1);
    setWidget(content);
    return column;
}

void ParameterDock::FitToInputs() {
    inputs_->layout()->activate();
    scroll_->setMinimumWidth(inputs_->minimumSizeHint().width() +
                             scroll_->verticalScrollBar()->sizeHint().width());
    scroll_->setMaximumHeight(inputs_->sizeHint().height());
}

void ParameterDock::MakeParRows(QGridLayout& grid, i16 count, const char* labelName) {
    for (i16 i = 0; i < count; ++i) {
        auto* box = new ValueBox(this);
        box->setObjectName(ControlName("txtParValue", i));
        box->SetVisibleCharacters(8);
        ConnectBox(*box, [this, i] { txtParValue_Change(i); });
        connect(box, &ValueBox::DblClick, this, [this, i] { txtParValue_DblClick(i); });
        connect(box, &ValueBox::KeyDownWithCtrl, this, [this, i] { txtParValue_DblClick(i); });
        connect(box, &ValueBox::MoveToNext, this, [this, i, count](int step) {
            ValueBox& next = ParValueBox(static_cast<i16>(std::clamp(i + step, 0, count - 1)));
            if (next.isVisible())
                next.setFocus(Qt::TabFocusReason);
        });
        auto* label = new MnemonicLabel(box, this);
        label->setObjectName(ControlName(labelName, i));
        grid.addWidget(label, i, 0);
        grid.addWidget(box, i, 1);
        lblPar_.push_back(label);
        txtParValue_.push_back(box);
    }
}

void ParameterDock::ShowParRow(i16 i, i16 parNo) {
    MnemonicLabel& label = *lblPar_[static_cast<std::size_t>(i)];
    ValueBox& box = ParValueBox(i);
    label.setVisible(parNo >= 0);
    box.setVisible(parNo >= 0);
    if (parNo < 0)
        return;
    const i16 kind = ParKind(parNo);
    label.setText(ToQt(ParLabel(kind)));
    box.setAccessibleName(ToQt(StripAmpersand(ParLabel(kind))));
    ExplainParameter(label, box, kind);
    box.Write(ToQt(ParText(kind)));
    box.SetBlue(IsBluePar(parNo));
}

void ParameterDock::ConnectBox(ValueBox& box, const std::function<void()>& change) {
    connect(&box, &ValueBox::textChanged, this, change);
    connect(&box, &ValueBox::returnPressed, this, &ParameterDock::cmdOK_Click);
}

bool ParameterDock::event(QEvent* event) {
    // A label's letter counts before the letter of a menu while the focus is in the window.
    if (event->type() == QEvent::ShortcutOverride &&
        HasMnemonic(*this, *static_cast<QKeyEvent*>(event)))
        event->accept();
    return QDockWidget::event(event);
}

void ParameterDock::keyPressEvent(QKeyEvent* event) {
    if (!FocusByMnemonic(*this, *event))
        QDockWidget::keyPressEvent(event);
}

} // namespace quorvanta
