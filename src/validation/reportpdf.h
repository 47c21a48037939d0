// The report of a validation as PDF.
#pragma once

#include "validation/report.h"

#include <QByteArray>

#include <vector>

namespace quorvanta::validation {

// The document on pages of A4, with its date at the foot of each. A QGuiApplication must exist.
QByteArray Pdf(const std::vector<Line>& document, const QString& foot);

} // namespace quorvanta::validation
