// What a parameter or an option is, in the first sentence that the help has of it. Without the help
// file there are no tool tips.
#pragma once

#include "core/types.h"

#include <QList>
#include <QString>

#include <optional>
#include <string>

class QWidget;

namespace quorvanta {

// What the page of this help number says first of the thing of that name: under the heading that it
// has there, in a list, or in a table. Labels and their abbreviations are one. Empty if it says
// nothing.
QString FirstSentenceOf(i32 number, const std::string& name);

// The widget's tool tip, from the first of these pages that knows the name; false if none does,
// which leaves the widget without.
bool Explain(QWidget& widget, const QList<i32>& numbers, const std::string& name);

// The same for an option of the current analysis, from its description or a page that this refers
// to, as a parameter of the analysis, or as a form of a value that many analyses have.
bool ExplainOption(QWidget& widget, const std::string& name);

// The same for a parameter of the current analysis; the help key in its box knows which it is.
void ExplainParameter(QWidget& label, QWidget& box, i16 kind);
std::optional<i16> ExplainedKind(const QWidget& box);

} // namespace quorvanta
