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
    : ChildWindow(TableWindow, windowNo, analysisNo), lblHint_(new QLabel(this)),
      cmdEditTable_(new QPushButton("Edit Table", this)) {
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
    cmdEditTable_->setObjectName("cmdEditTable");
    cmdEditTable_->setAutoDefault(false);
    connect(cmdEditTable_, &QPushButton::clicked, this, &frmTable::cmdEditTable_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(lblHint_, 1);
    column->addWidget(picture_, 1);
    column->addWidget(cmdEditTable_, 0, Qt::AlignRight);
    Refresh();
}

void frmTable::Refresh() {
    const Presentation table = PresentationOf(AnalysisTag());
    const bool hadResult = !picture_->isHidden();
    lblHint_->setText(RunHint());
    lblHint_->setVisible(!table.HasResult());
    picture_->setVisible(table.HasResult());
    cmdEditTable_->setVisible(table.HasResult());
    if (!table.HasResult())
        return;
    picture_->Redraw();
    QStringList lines;
    for (const std::string& line : TableLines(LayOutTable(table)))
        lines << ToQt(line);
    picture_->Picture().setAccessibleDescription(lines.join('\n'));
    if (!hadResult)
        FitToContent();
}

void frmTable::cmdEditTable_Click() {
    if (Calculating == False && AnalysisTag() == AnalysisNo)
        frmEditTable(this, tr("Edit Table"), true).exec();
}

} // namespace quorvanta
