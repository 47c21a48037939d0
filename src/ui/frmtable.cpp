#include "ui/frmtable.h"

#include "core/catalogue.h"
#include "output/table_layout.h"
#include "ui/accessible.h"
#include "ui/frmedittable.h"
#include "ui/qttext.h"
#include "ui/scrolledpicture.h"

#include <QPushButton>

#include <algorithm>

namespace quorvanta {

namespace {

// The table without the pages that it may be broken into: one row for each x.
QList<QStringList> CellsOf(const TableLayout& table) {
    QList<QStringList> rows{{ToQt(table.CornerLabel)}};
    for (const TableBlock& block : table.Blocks) {
        for (const std::string& head : block.Heads)
            rows.front() << ToQt(head.empty() ? table.CellLabel : table.HeadLabel + " " + head);
        rows.resize(std::max(rows.size(), static_cast<qsizetype>(block.Rows.size()) + 1));
        for (std::size_t i = 0; i < block.Rows.size(); ++i) {
            QStringList& row = rows[static_cast<qsizetype>(i) + 1];
            const bool hasHead = !row.isEmpty();
            for (std::size_t j = hasHead ? 1 : 0; j < block.Rows[i].size(); ++j)
                row << ToQt(TrimmedCell(block.Rows[i][j]));
        }
    }
    return rows;
}

} // namespace

frmTable::frmTable(i16 windowNo, i16 analysisNo) : RunWindow(TableWindow, windowNo, analysisNo) {
    setObjectName(ControlName("frmTable", windowNo));
    const auto draw = [this](Surface& surface) {
        return DrawTable(surface, LayOutTable(PresentationOf(AnalysisTag())));
    };
    picture_ = new ScrolledPicture("PicTable", draw, this);
    SetAccessibleCells(picture_->Picture(), {});
    connect(picture_, &ScrolledPicture::MenuRequested, this, &frmTable::RequestOutputMenu);
    connect(picture_, &ScrolledPicture::DblClick, this, &frmTable::cmdEditTable_Click);
    const auto* edit = LayOut(picture_, "cmdEditTable", "Edit Table");
    connect(edit, &QPushButton::clicked, this, &frmTable::cmdEditTable_Click);
}

void frmTable::Redraw(const QString& words) {
    picture_->Redraw();
    picture_->Picture().setAccessibleDescription(words);
    SetAccessibleCells(picture_->Picture(), CellsOf(LayOutTable(PresentationOf(AnalysisTag()))));
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
