// What screen readers are told of controls that Qt doesn't know enough of.
#pragma once

class QString;
class QTabWidget;
class QWidget;

namespace quorvanta {

// The widget is a picture to a screen reader, and not just any area of a window. What it is called
// is its accessible name, what it shows its accessible description. Axes run from left to right and
// numbers have their minus in front, whatever the direction of the windows is.
void MakeAccessiblePicture(QWidget& widget);

// Names the tabs, and what they lead to, as a whole.
void NameTabs(QTabWidget& tabs, const QString& name);

} // namespace quorvanta
