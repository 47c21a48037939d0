// The fields of a type: name, size and bold, as the edit windows have them.
#pragma once

#include "output/settings.h"

class QCheckBox;
class QFormLayout;
class QLineEdit;
class QFontComboBox;
class QWidget;

namespace quorvanta {

class TypeFields {
  public:
    // Adds a row for each field to the form. "Font &Bold" ends with a colon where the others do.
    TypeFields(QFormLayout& form, const TypeSettings& settings, const char* boldLabel,
               QWidget* parent);

    TypeSettings Settings() const;

  private:
    QFontComboBox* cbFontName_;
    QLineEdit* txtFontSize_;
    QCheckBox* chkFontBold_;
};

} // namespace quorvanta
