// What screen readers are told of controls that Qt doesn't know enough of.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class QTabWidget;
class QWidget;

namespace quorvanta {

// The widget is a picture to a screen reader, and not just any area of a window. What it is called
// is its accessible name, what it shows its accessible description. Axes run from left to right and
// numbers have their minus in front, whatever the direction of the windows is.
void MakeAccessiblePicture(QWidget& widget);

// What such a picture shows as a table, row by row: a screen reader walks through its cells. The
// first row has the heads of the columns, the first cell of each further row is its head. A row
// that is shorter ends in empty cells. Taken anew whenever the table has changed.
void SetAccessibleCells(QWidget& picture, const QList<QStringList>& rows);

// Names the tabs, and what they lead to, as a whole.
void NameTabs(QTabWidget& tabs, const QString& name);

} // namespace quorvanta
