#include "ui/frmtable.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "output/table_layout.h"
#include "ui/frmedittable.h"
#include "ui/qttext.h"
#include "ui/scrolledpicture.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvanta {

frmTable::frmTable(i16 windowNo, i16 analysisNo)
    : ChildWindow(TableWindow, windowNo, analysisNo), lblHint_(new QLabel(this)) {
    setObjectName(ControlName("frmTable", windowNo));
    lblHint_->setObjectName("lblHint");
    lblHint_->setWordWrap(true);
    lblHint_->setAlignment(Qt::AlignCenter);
    const auto draw = [this](Surface& surface) {
        return DrawTable(surface, LayOutTable(PresentationOf(AnalysisTag())));
    };
    picture_ = new ScrolledPicture("PicTable", draw, this);
    picture_->Picture().setAccessibleName(tr("Table"));
    connect(picture_, &ScrolledPicture::MenuRequested, this, &frmTable::RequestOutputMenu);
    connect(picture_, &ScrolledPicture::DblClick, this, &frmTable::cmdEditTable_Click);
    cmdEditTable_ = new QPushButton("Edit Table", this);
    cmdEditTable_->setObjectName("cmdEditTable");
    cmdEditTable_->setAutoDefault(true);
    connect(cmdEditTable_, &QPushButton::clicked, this, &frmTable::cmdEditTable_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblHint_, 1);
    column->addWidget(picture_, 1);
    column->addWidget(cmdEditTable_, 0, Qt::AlignRight);
    Refresh();
}

void frmTable::Refresh() {
    const bool hasResult = PresentationOf(AnalysisTag()).HasResult();
    const bool hadResult = !picture_->isHidden();
    lblHint_->setText(RunHint());
    lblHint_->setVisible(!hasResult);
    picture_->setVisible(hasResult);
    setFocusProxy(hasResult ? picture_ : nullptr); // what is not seen can't have the focus
    cmdEditTable_->setVisible(hasResult);
    if (!hasResult)
        return;
    picture_->Redraw();
    picture_->Picture().setAccessibleDescription(ResultInWords());
    if (!hadResult)
        FitToContent();
}

void frmTable::cmdEditTable_Click() {
    if (Calculating == False && AnalysisTag() == AnalysisNo)
        frmEditTable(this, tr("Edit Table"), true).exec();
}

} // namespace quorvanta
