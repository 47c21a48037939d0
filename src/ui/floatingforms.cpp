#include "ui/floatingforms.h"

#include "core/floating_windows.h"
#include "ui/frmdistrgraph.h"
#include "ui/frmgridtable.h"
#include "ui/frmmontegroupseq.h"
#include "ui/frmoutput.h"
#include "ui/frmshowintpar.h"
#include "ui/frmshowpar.h"
#include "ui/frmshowsmp.h"
#include "ui/frmsummary.h"

namespace quorvanta {

template <class Window>
void FloatingForms::Add(FloatingWindow window, Window* form, bool follows) {
    forms_[window] = {form, [form] { form->Refresh(); }, follows};
}

FloatingForms::FloatingForms(QWidget& parent)
    : frmShowPar_(new frmShowPar(&parent)), frmShowIntPar_(new frmShowIntPar(&parent)) {
    Add(FloatingWindow::Options, new frmShowSmp(&parent), false);
    Add(FloatingWindow::Parameters, frmShowPar_, true);
    Add(FloatingWindow::InterimParameters, frmShowIntPar_, true);
    Add(FloatingWindow::SequentialMonitor, new frmMonteGroupSeq(&parent), true);
    Add(FloatingWindow::Grid, new frmGridTable0(&parent), true);
    Add(FloatingWindow::Summary, new frmSummary(&parent), false);
    Add(FloatingWindow::DistrGraph, new frmDistrGraph(&parent), false);
    Add(FloatingWindow::Output, new frmOutput(&parent), true);
}

QWidget* FloatingForms::Widget(FloatingWindow window) const {
    const auto form = forms_.find(window);
    return form != forms_.end() ? form->second.Widget : nullptr;
}

bool FloatingForms::IsShown(FloatingWindow window) const {
    const QWidget* widget = Widget(window);
    return widget != nullptr && widget->isVisible();
}

void FloatingForms::Refresh(FloatingWindow window) const {
    forms_.at(window).Refresh();
}

void FloatingForms::RefreshFollowers(bool hasResult) const {
    for (const auto& [window, form] : forms_)
        if (form.Follows && form.Widget->isVisible() && (hasResult || !ShowsResult(window)))
            form.Refresh();
}

void FloatingForms::HideResults(std::optional<FloatingWindow> but) const {
    for (const auto& [window, form] : forms_)
        if (window != but && ShowsResult(window))
            form.Widget->hide();
}

} // namespace quorvanta
