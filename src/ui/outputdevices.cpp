#include "ui/outputdevices.h"

#include "ui/paintsurface.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>

namespace quorvanta {

namespace {

constexpr f64 MarginMillimetres = 20;

} // namespace

void CopyTextToClipboard(const QString& plain, const QByteArray& rtf, const QString& html) {
    auto* data = new QMimeData; // the clipboard takes it over
    data->setText(plain);
    data->setData("text/rtf", rtf);
    data->setData("application/rtf", rtf);
    data->setHtml(html);
    QApplication::clipboard()->setMimeData(data);
}

void PrintOn(QPrinter& printer, const Drawing& drawing) {
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    Paper paper;
    paper.Inches = printer.pageRect(QPrinter::Inch).size();
    paper.IsPrinter = true;
    paper.TurnPage = [&printer] { printer.newPage(); };
    PaintSurface surface(painter, paper);
    drawing(surface);
}

void PrintWithPreview(QWidget* parent, const QString& title, OutputForm form,
                      const Drawing& drawing) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    printer.setPageMargins(
        QMarginsF(MarginMillimetres, MarginMillimetres, MarginMillimetres, MarginMillimetres),
        QPageLayout::Millimeter);
    if (form == OutputForm::Picture)
        printer.setPageOrientation(QPageLayout::Landscape);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setObjectName("printPreview");
    preview.setWindowTitle(title);
    // Qt leaves these without names.
    if (auto* pages = preview.findChild<QPrintPreviewWidget*>()) {
        pages->setAccessibleName(QObject::tr("Pages"));
        for (auto* view : pages->findChildren<QAbstractScrollArea*>())
            view->setAccessibleName(pages->accessibleName());
    }
    for (auto* box : preview.findChildren<QLineEdit*>())
        if (qobject_cast<QComboBox*>(box->parentWidget()) == nullptr)
            box->setAccessibleName(QObject::tr("Page"));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&drawing](QPrinter* pages) { PrintOn(*pages, drawing); });
    preview.exec();
}

} // namespace quorvanta
