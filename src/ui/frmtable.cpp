#include "ui/frmtable.h"

#include "core/catalogue.h"
#include "output/table_layout.h"
#include "ui/frmedittable.h"
#include "ui/qttext.h"
#include "ui/scrolledpicture.h"

#include <QPushButton>

namespace quorvanta {

frmTable::frmTable(i16 windowNo, i16 analysisNo) : RunWindow(TableWindow, windowNo, analysisNo) {
    setObjectName(ControlName("frmTable", windowNo));
    const auto draw = [this](Surface& surface) {
        return DrawTable(surface, LayOutTable(PresentationOf(AnalysisTag())));
    };
    picture_ = new ScrolledPicture("PicTable", draw, this);
    connect(picture_, &ScrolledPicture::MenuRequested, this, &frmTable::RequestOutputMenu);
    connect(picture_, &ScrolledPicture::DblClick, this, &frmTable::cmdEditTable_Click);
    const auto* edit = LayOut(picture_, "cmdEditTable", "Edit Table");
    connect(edit, &QPushButton::clicked, this, &frmTable::cmdEditTable_Click);
}

void frmTable::Redraw(const QString& words) {
    picture_->Redraw();
    picture_->Picture().setAccessibleDescription(words);
}

void frmTable::Dim(bool isDimmed) {
    picture_->SetDimmed(isDimmed);
    picture_->Picture().setAccessibleName(isDimmed ? tr("Table, not up to date") : tr("Table"));
}

void frmTable::cmdEditTable_Click() {
    if (MayBeEdited())
        frmEditTable(this, tr("Edit Table"), true).exec();
}

} // namespace quorvanta
