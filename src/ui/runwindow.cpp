#include "ui/runwindow.h"

#include "core/analysis_state.h"
#include "output/table_layout.h"
#include "ui/qttext.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvanta {

namespace {

// What to do next where there is no result yet.
QString Hint() {
    if (TestName.empty() && DistrName.empty())
        return RunWindow::tr("Choose a test or a distribution from the menus.");
    if (NoOfPar < 1)
        return RunWindow::tr("Choose the options, then press OK.");
    return RunWindow::tr("Choose the axes and the values at the side, then press OK.");
}

QString InWords(const Presentation& result) {
    QStringList lines;
    for (const std::string& line : TableLines(LayOutTable(result)))
        lines << ToQt(line);
    return lines.join('\n');
}

} // namespace

RunWindow::RunWindow(i16 windowKind, i16 windowNo, i16 analysisNo)
    : ChildWindow(windowKind, windowNo, analysisNo), lblHint_(new QLabel(this)),
      lblStale_(new QLabel(this)) {
    lblStale_->setObjectName("lblStale");
    lblStale_->setText(tr("Not up to date: press OK.")); // beside the button of a narrow table
    lblStale_->setToolTip(tr("Values have changed since this was calculated."));
    lblStale_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    lblStale_->hide();
    lblHint_->setObjectName("lblHint");
    lblHint_->setWordWrap(true);
    lblHint_->setAlignment(Qt::AlignCenter);
}

QPushButton* RunWindow::LayOut(QWidget* picture, const QString& buttonName,
                               const QString& buttonCaption) {
    picture_ = picture;
    // Made after the picture: the Tab key follows.
    edit_ = new QPushButton(buttonCaption, this);
    edit_->setObjectName(buttonName);
    edit_->setAutoDefault(true);
    auto* column = new QVBoxLayout(this);
    column->addWidget(lblHint_, 1);
    column->addWidget(picture_, 1);
    auto* foot = new QHBoxLayout; // its height is that of the button: the picture keeps its size
    foot->addWidget(lblStale_, 1);
    foot->addStretch();
    foot->addWidget(edit_);
    column->addLayout(foot);
    Refresh();
    return edit_;
}

void RunWindow::Refresh() {
    const Presentation result = PresentationOf(AnalysisTag());
    const bool hadResult = !picture_->isHidden();
    lblHint_->setText(Hint());
    lblHint_->setVisible(!result.HasResult());
    picture_->setVisible(result.HasResult());
    edit_->setVisible(result.HasResult());
    setFocusProxy(result.HasResult() ? picture_ : nullptr); // what is not seen has no focus
    ShowStale();
    if (!result.HasResult())
        return;
    Redraw(InWords(result));
    if (!hadResult)
        FitToContent();
}

void RunWindow::ShowStale() {
    const bool isStale = !picture_->isHidden() && IsStale(AnalysisTag());
    lblStale_->setVisible(isStale);
    Dim(isStale);
}

bool RunWindow::MayBeEdited() const {
    return Calculating == False && AnalysisTag() == AnalysisNo;
}

} // namespace quorvanta
