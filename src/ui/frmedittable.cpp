#include "ui/frmedittable.h"

#include "output/settings.h"
#include "ui/editbuttons.h"
#include "ui/qttext.h"
#include "ui/titlefield.h"
#include "ui/typefields.h"

#include <QFormLayout>
#include <QLineEdit>

namespace quorvanta {

frmEditTable::frmEditTable(QWidget* parent, const QString& caption, bool hasColumns,
                           bool hasDecimals)
    : QDialog(parent), txtTitle_(new TitleField(CurrentTableSettings().Title, this)),
      txtColumns_(new QLineEdit(this)), txtDecimals_(new QLineEdit(this)) {
    setObjectName("frmEditTable");
    setWindowTitle(caption);
    const TableSettings settings = CurrentTableSettings();
    txtColumns_->setObjectName("txtColumns");
    txtColumns_->setText(ToQt(settings.Columns));
    txtDecimals_->setObjectName("txtDecimals");
    txtDecimals_->setText(ToQt(settings.Decimals));

    auto* form = new QFormLayout(this);
    form->addRow("&Title:", txtTitle_);
    form->addRow("&No Of Columns:", txtColumns_);
    form->addRow("No Of &Decimals:", txtDecimals_);
    form->setRowVisible(txtColumns_, hasColumns);
    form->setRowVisible(txtDecimals_, hasDecimals);
    type_ = std::make_unique<TypeFields>(*form, settings.Type, "Font &Bold:", this);
    form->addRow(MakeEditButtons(*this, [this] { cmdOK_Click(); }));
}

frmEditTable::~frmEditTable() = default;

void frmEditTable::cmdOK_Click() {
    if (ApplySettings(TableSettings{txtTitle_->Lines(), FromQt(txtColumns_->text()),
                                    FromQt(txtDecimals_->text()), type_->Settings()}))
        accept();
    else
        FocusRefused(*this);
}

} // namespace quorvanta
