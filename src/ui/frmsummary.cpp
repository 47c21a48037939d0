#include "ui/frmsummary.h"

#include "output/settings.h"
#include "output/statement.h"
#include "ui/editbuttons.h"
#include "ui/qttext.h"
#include "ui/typefields.h"

#include <QFormLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextEdit>
#include <QVBoxLayout>

namespace quorvanta {

frmSummary::frmSummary(QWidget* parent) : QDialog(parent), txtSummary_(new QTextEdit(this)) {
    setObjectName("frmSummary");
    setWindowTitle("Summary");
    txtSummary_->setObjectName("txtSummary");
    txtSummary_->setAccessibleName("Summary");
    txtSummary_->setAcceptRichText(false);
    txtSummary_->setTabChangesFocus(true);
    txtSummary_->installEventFilter(this);
    auto* cmdEdit = new QPushButton("&Edit", this);
    cmdEdit->setObjectName("cmdEdit");
    cmdEdit->setAutoDefault(false);
    connect(txtSummary_, &QTextEdit::textChanged, this, &frmSummary::txtSummary_Change);
    connect(cmdEdit, &QPushButton::clicked, this, &frmSummary::cmdEdit_Click);

    auto* column = new QVBoxLayout(this);
    column->addWidget(txtSummary_, 1);
    column->addWidget(cmdEdit, 0, Qt::AlignRight);
}

void frmSummary::Refresh() {
    const TypeSettings type = CurrentSummarySettings();
    QFont font(ToQt(type.FontName));
    font.setPointSize(SummaryFontSize);
    font.setBold(type.Bold);
    txtSummary_->setFont(font);
    const QString text = ToQt(StatementText());
    if (text == txtSummary_->toPlainText())
        return;
    const QSignalBlocker quiet(txtSummary_);
    txtSummary_->setPlainText(text);
}

void frmSummary::txtSummary_Change() {
    EditStatement(FromQt(txtSummary_->toPlainText()));
}

// As wide as the eighty characters of a wrapped text, and as high as the statement then is.
QSize frmSummary::sizeHint() const {
    constexpr int characters = 80;
    const QFontMetrics metrics(txtSummary_->font());
    const int width = characters * metrics.averageCharWidth();
    const int height =
        metrics.boundingRect(0, 0, width, 10000, Qt::TextWordWrap, txtSummary_->toPlainText())
            .height();
    return {width + 4 * metrics.height(), height + 7 * fontMetrics().height()};
}

void frmSummary::cmdEdit_Click() {
    if (frmEditSummary(this).exec() == Accepted)
        Refresh();
}

// The key of the File menu copies the whole statement; while some of it is selected it belongs to
// the selection.
bool frmSummary::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->setAccepted(txtSummary_->textCursor().hasSelection());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

frmEditSummary::frmEditSummary(QWidget* parent) : QDialog(parent) {
    setObjectName("frmEditSummary");
    setWindowTitle("Edit Summary");
    auto* form = new QFormLayout(this);
    type_ = std::make_unique<TypeFields>(*form, CurrentSummarySettings(), "Font &Bold", this);
    form->addRow(MakeEditButtons(*this, [this] { cmdOK_Click(); }));
}

frmEditSummary::~frmEditSummary() = default;

void frmEditSummary::cmdOK_Click() {
    if (ApplySummarySettings(type_->Settings()))
        accept();
}

} // namespace quorvanta
