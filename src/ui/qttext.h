// Between the engine's texts and Qt's.
#pragma once

#include "core/program_name.h"

#include <QString>

#include <string>
#include <string_view>

namespace quorvanta {

inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

// The title of the main window and of its messages.
inline QString ProgramTitle() {
    return QString(ProgramName) + ProgramVersion;
}

// A member of a control array goes by its index: "cmdParLabel(4)". Checks, scripts and
// accessibility tools find it by this object name.
inline QString ControlName(const QString& array, int index) {
    return array + QLatin1Char('(') + QString::number(index) + QLatin1Char(')');
}

} // namespace quorvanta
