// The road of one request, driven through the real windows as a user drives it.
#pragma once

#include "ui/frmmain.h"

#include <QString>

#include <ostream>

namespace quorvanta {

// What the tour read from the windows.
struct TourReading {
    QString Headline;
    QString SampleSize;
    QString Power;
};

// Plans a comparison of two means: from the empty main window to a sample size and back to the
// power. Tells what it does, line by line; saves a picture of each station in the folder, if one
// is named.
TourReading RunTour(frmMain& window, std::ostream& tell, const QString& pictureFolder);

} // namespace quorvanta
