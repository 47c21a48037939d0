#include "ui/frmsplash.h"

#include "core/program_name.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace quorvanta {

namespace {

constexpr int LongestMilliseconds = 1200;

} // namespace

// No Qt::SplashScreen: a window of that type handles events while it is being shown, and one that
// ended it then would leave exec() waiting for an end that has been.
frmSplash::frmSplash() : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint) {
    setObjectName("frmSplash");
    setWindowTitle(ProgramTitle());
    setModal(true);
    const int line = fontMetrics().height();

    auto* icon = new QLabel(this);
    icon->setPixmap(QApplication::windowIcon().pixmap(QSize(6 * line, 6 * line)));
    icon->setAlignment(Qt::AlignCenter);

    auto* name = new QLabel(QString("%1 %2").arg(ProgramName, ProgramVersion), this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 2);
    large.setBold(true);
    name->setFont(large);
    name->setAlignment(Qt::AlignCenter);

    auto* purpose =
        new QLabel(tr("Plans studies: press the label of any quantity, read its value."), this);
    purpose->setAlignment(Qt::AlignCenter);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(3 * line, 2 * line, 3 * line, 2 * line);
    column->setSpacing(line);
    column->addWidget(icon);
    column->addWidget(name);
    column->addWidget(purpose);
}

void frmSplash::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QTimer::singleShot(LongestMilliseconds, this, &QDialog::accept);
}

void frmSplash::keyPressEvent(QKeyEvent* /*event*/) {
    accept();
}

void frmSplash::mousePressEvent(QMouseEvent* /*event*/) {
    accept();
}

} // namespace quorvanta
