#include "ui/typefields.h"

#include "ui/qttext.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLineEdit>

namespace quorvanta {

TypeFields::TypeFields(QFormLayout& form, const TypeSettings& settings, const char* boldLabel,
                       QWidget* parent)
    : cbFontName_(new QFontComboBox(parent)), txtFontSize_(new QLineEdit(parent)),
      chkFontBold_(new QCheckBox(boldLabel, parent)) {
    cbFontName_->setObjectName("cbFontName");
    // A font that this machine lacks keeps its name: another machine may have it.
    cbFontName_->setEditText(ToQt(settings.FontName));
    txtFontSize_->setObjectName("txtFontSize");
    txtFontSize_->setText(ToQt(settings.FontSize));
    chkFontBold_->setObjectName("chkFontBold");
    chkFontBold_->setChecked(settings.Bold);
    form.addRow("&Font Name:", cbFontName_);
    form.addRow("Font &Size:", txtFontSize_);
    form.addRow("", chkFontBold_);
}

TypeSettings TypeFields::Settings() const {
    return {FromQt(cbFontName_->currentText()), FromQt(txtFontSize_->text()),
            chkFontBold_->isChecked()};
}

} // namespace quorvanta
