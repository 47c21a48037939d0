// The buttons of the edit windows.
#pragma once

#include <functional>

class QDialog;
class QWidget;

namespace quorvanta {

// "&OK" does what is told; "&Cancel" leaves everything as it was.
QWidget* MakeEditButtons(QDialog& dialog, std::function<void()> ok);

// Leads to the field whose text was refused.
void FocusRefused(const QDialog& dialog);

} // namespace quorvanta
