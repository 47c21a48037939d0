// The floating windows that exist, each with what showing and refreshing it takes.
#pragma once

#include "core/platform.h"

#include <functional>
#include <map>
#include <optional>

class QWidget;

namespace quorvanta {

class frmShowIntPar;
class frmShowPar;

class FloatingForms {
  public:
    // Makes them all, hidden, as children of the main window.
    explicit FloatingForms(QWidget& parent);

    // Nothing for a window that does not exist.
    QWidget* Widget(FloatingWindow window) const;
    frmShowPar& Parameters() const { return *frmShowPar_; }
    frmShowIntPar& InterimParameters() const { return *frmShowIntPar_; }

    bool IsShown(FloatingWindow window) const;

    // The window takes what it shows from the state.
    void Refresh(FloatingWindow window) const;

    // The current analysis has changed: so do the windows beside it that follow it, as long as they
    // are shown, and those of a result as long as there is one.
    void RefreshFollowers(bool hasResult) const;

    // Hides the windows that show a result, but for one of them.
    void HideResults(std::optional<FloatingWindow> but = std::nullopt) const;

  private:
    struct Form {
        QWidget* Widget = nullptr;
        std::function<void()> Refresh;
        bool Follows = false; // the current analysis, while it is shown
    };

    template <class Window>
    void Add(FloatingWindow window, Window* form, bool follows);

    std::map<FloatingWindow, Form> forms_;
    frmShowPar* frmShowPar_;
    frmShowIntPar* frmShowIntPar_;
};

} // namespace quorvanta
