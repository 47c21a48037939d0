// Table and graph windows with the unpaired t-test, and frmShowPar beside them.
#pragma once

#include "core/analysis_state.h"
#include "core/showpar.h"
#include "ui/childwindow.h"
#include "ui/window_fixture.h"

#include <QComboBox>
#include <QLineEdit>

#include <functional>

// What a failed comparison of texts shows.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace quorvanta {

class RunCheck : public WindowCheck {
  protected:
    static constexpr auto NewTable = "mnuFile(1)";
    static constexpr auto NewGraph = "mnuFile(2)";

    // The parameters of the test, in the order of its list.
    static constexpr i16 Level = 0;
    static constexpr i16 Power = 1;
    static constexpr i16 Mean0 = 2; // the difference of the means under H0
    static constexpr i16 Mean1 = 3; // and under H1
    static constexpr i16 Sd = 4;
    static constexpr i16 Size1 = 5;
    static constexpr i16 Size2 = 6; // as a ratio to the first

    // Two-sided, the means as a difference, the second size as a ratio.
    void OpenRunWindow(const QString& entry);

    // The size of group 1 against the difference, one column or curve for each standard deviation.
    // The other texts are those of the catalogue: level 0.05, no difference under H0, ratio 1.
    void AskForSizes(const QString& power, const QString& min, const QString& max,
                     const QString& step, const QString& sds);

    QWidget& Parameters() { return *Window().Floating(FloatingWindow::Parameters); }
    QComboBox& List(int k);
    QLineEdit& ParBox(const QString& name);
    // The box of a parameter that has no role.
    QLineEdit& FixedBox(i16 parNo);
    QWidget& Ok() { return *hands::Control(Parameters(), "cmdOK"); }
    QString Caption() { return hands::TextOf(Parameters(), "cmdOK"); }

    // Opens the list by the mouse and takes an entry by the keys.
    void Choose(int k, i16 parNo);
    void TypeIntoBox(const QString& name, const QString& text);
    void PressOk() { hands::Click(Ok()); }

    // The picture of the table or graph in front, and the names of its edit button and window.
    QWidget& Picture();
    QString EditButton();
    QString EditWindow();

    // Opens the edit window, does this in it and presses a button.
    void Edit(const std::function<void(QWidget&)>& act, const char* button = "cmdOK");
    void EditText(const char* field, const QString& text);
    static void Replace(QWidget& dialog, const char* field, const QString& text);
    static void ReplaceTitle(QWidget& dialog, const QString& text);

    // The text is refused with this message; the edit window stays open with it, and with the
    // focus there, until it is given up.
    void ExpectRefused(const char* field, const QString& text, const QString& message,
                       const QString& title = "Quorvanta3.0");

    // A double click on the picture opens the edit window, and so does Return on its button.
    void ExpectEditedByMouseAndKeys();

    // A change dims the picture and the window says so, until a run is complete. It is stale then.
    void ExpectDimmedWhileStale();

    // A right click on the picture opens the pop-up menu while the result is valid.
    void ExpectOutputMenuWhileValid();
};

} // namespace quorvanta
