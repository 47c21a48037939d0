#include "ui/qtplatform.h"

#include "core/analysis.h"
#include "ui/frmmain.h"
#include "ui/frmnewwindow.h"
#include "ui/frmprogress.h"
#include "ui/qtsurface.h"
#include "ui/qttext.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QMessageBox>
#include <QMimeData>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace quorvanta {

namespace {

QMessageBox::Icon BoxIcon(Icon icon) {
    switch (icon) {
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons BoxButtons(Buttons buttons) {
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

Answer BoxAnswer(int button) {
    switch (button) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Ok:
        return Answer::Ok;
    default:
        return Answer::Cancel;
    }
}

// "A (*.a)|*.a|B (*.b)|*.b" as the dialog of Qt wants it: "A (*.a)", "B (*.b)". "*.*" is written
// "*" there: a name need not have a point.
QStringList NameFilters(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString name = parts[i].section(" (", 0, 0);
        names << name + " (" + (parts[i + 1] == "*.*" ? QString("*") : parts[i + 1]) + ")";
    }
    return names;
}

// A picture for other programs: black on white, 7 by 5 inches.
QImage Picture(const Drawing& drawing) {
    constexpr f64 dpi = 192;
    constexpr f64 metre = 39.37;
    const QSize size(7 * static_cast<int>(dpi), 5 * static_cast<int>(dpi));
    QImage image(size, QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(dpi * metre));
    image.setDotsPerMeterY(static_cast<int>(dpi * metre));
    image.fill(Qt::white);
    QPainter painter(&image);
    QtSurface surface(painter, QRectF(QPointF(0, 0), QSizeF(size)), dpi, Qt::black);
    drawing(surface);
    return image;
}

} // namespace

QtPlatform::QtPlatform(frmMain& window) : window_(window) {
    clock_.start();
    SetPlatform(*this);
}

Answer QtPlatform::MsgBox(const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) {
    QWidget* active = QApplication::activeWindow();
    QWidget* parent = active != nullptr ? active : &window_;
    QMessageBox box(parent);
    box.setObjectName("msgBox");
    box.setWindowTitle(title.empty() ? ProgramTitle() : ToQt(title));
    // Texts hold "<" and ">" that are no markup, and the line breaks of a text file.
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(text).replace("\r\n", "\n"));
    box.setIcon(BoxIcon(icon));
    box.setStandardButtons(BoxButtons(buttons));
    const int button = box.exec();
    // Not every window manager gives the focus back to the window that it came from.
    parent->activateWindow();
    return BoxAnswer(button);
}

void QtPlatform::Beep() {
    QApplication::beep();
}

void QtPlatform::DoEvents() {
    constexpr qint64 nanosecondsBetweenPumps = 1'000'000;
    if (clock_.nsecsElapsed() - lastPump_ < nanosecondsBetweenPumps)
        return;
    QCoreApplication::processEvents();
    lastPump_ = clock_.nsecsElapsed();
}

f64 QtPlatform::Timer() {
    return static_cast<f64>(clock_.nsecsElapsed()) / 1e9;
}

void QtPlatform::ShowProgress(i32 total) {
    window_.Progress().Start(total);
}

void QtPlatform::StepProgress() {
    window_.Progress().Step();
}

void QtPlatform::HideProgress() {
    window_.Progress().hide();
}

std::optional<i16> QtPlatform::AskWindowKind(bool offerSimulation) {
    return frmNewWindow(&window_, offerSimulation).Ask();
}

std::optional<std::string> QtPlatform::AskOpenName(const FileDialog& dialog) {
    QFileDialog box(&window_, ToQt(dialog.Title), folder_);
    box.setObjectName("frmCmdialog");
    box.setFileMode(QFileDialog::ExistingFile);
    const QStringList filters = NameFilters(dialog.Filter);
    box.setNameFilters(filters);
    box.selectNameFilter(filters.value(dialog.FilterIndex - 1));
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    const QString path = box.selectedFiles().value(0);
    folder_ = QFileInfo(path).absolutePath();
    return FromQt(path);
}

std::optional<std::string> QtPlatform::AskSaveName(const FileDialog& dialog) {
    QFileDialog box(&window_, ToQt(dialog.Title), folder_);
    box.setObjectName("frmCmdialog");
    box.setAcceptMode(QFileDialog::AcceptSave);
    box.setNameFilters(NameFilters(dialog.Filter));
    box.setDefaultSuffix(ToQt(dialog.DefaultExtension));
    box.selectFile(ToQt(dialog.FileName));
    if (box.exec() != QDialog::Accepted)
        return std::nullopt;
    const QString path = box.selectedFiles().value(0);
    folder_ = QFileInfo(path).absolutePath();
    return FromQt(path);
}

std::optional<OutputForm> QtPlatform::AskOutputForm(OutputAction /*action*/) {
    return OutputForm::Text;
}

void QtPlatform::CopyText(const std::string& plain, const std::string& rtf) {
    auto* data = new QMimeData;
    data->setText(ToQt(plain));
    data->setData("text/rtf", QByteArray::fromStdString(rtf));
    data->setData("application/rtf", QByteArray::fromStdString(rtf));
    QApplication::clipboard()->setMimeData(data);
}

void QtPlatform::CopyPicture(const Drawing& drawing) {
    QApplication::clipboard()->setImage(Picture(drawing));
}

void QtPlatform::Print(const Drawing& drawing) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog preview(&printer, &window_);
    preview.setObjectName("frmPrintPreview");
    QObject::connect(
        &preview, &QPrintPreviewDialog::paintRequested, &preview, [&drawing](QPrinter* device) {
            QPainter painter(device);
            const QRectF page = device->pageLayout().paintRectPixels(device->resolution());
            QtSurface surface(painter, QRectF(QPointF(0, 0), page.size()), device->resolution(),
                              Qt::black);
            surface.SetPages([device] { device->newPage(); });
            drawing(surface);
        });
    preview.exec();
}

std::string QtPlatform::Bitmap(const Drawing& drawing) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Picture(drawing).save(&buffer, "BMP");
    return buffer.data().toStdString();
}

void QtPlatform::OpenChild(i16 windowKind, i16 windowNo, i16 analysisNo,
                           const std::string& caption) {
    window_.OpenChild(windowKind, windowNo, analysisNo, ToQt(caption));
}

void QtPlatform::RaiseChild(i16 windowKind, i16 windowNo) {
    window_.RaiseChild(windowKind, windowNo);
}

void QtPlatform::RefreshChild() {
    window_.RefreshChild();
}

void QtPlatform::RefreshOptions() {
    window_.RefreshOptions();
}

void QtPlatform::Show(FloatingWindow window) {
    window_.ShowFloating(window);
}

void QtPlatform::Hide(FloatingWindow window) {
    QWidget* floating = window_.Floating(window);
    if (floating == nullptr || !floating->isVisible())
        return;
    floating->hide();
    window_.activateWindow();
}

bool QtPlatform::IsShown(FloatingWindow window) {
    const QWidget* floating = window_.Floating(window);
    return floating != nullptr && floating->isVisible();
}

void QtPlatform::RefreshMenus() {
    window_.RefreshMenus();
}

void QtPlatform::CloseMain() {
    window_.close();
}

} // namespace quorvanta
