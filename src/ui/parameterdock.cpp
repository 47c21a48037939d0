#include "ui/parameterdock.h"

#include "ui/mnemoniclabel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

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
