// The hands of a user inside the installed program, which is not changed for it: a plugin that Qt
// loads when the environment asks for it (QT_QPA_GENERIC_PLUGINS=quorvantadriver:<task>).
//
// Tasks, with what each prints on the standard output:
//   solve     plans a t-test, saves it into the folder, reads a page of the help, has the
//             installation validated; "size 64", "help <its heading>", "validation PASS: ..."
//   open      tells of the analysis that the program was started with: "size 64"
#include "tour/hands.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGenericPlugin>
#include <QLineEdit>
#include <QLocale>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <cstdlib>
#include <iostream>
#include <utility>

namespace quorvanta {

namespace {

// Where "solve" leaves its files.
QDir Folder() {
    return QDir(qEnvironmentVariable("QUORVANTA_DRIVER_FOLDER"));
}

void Print(const QString& line) {
    std::cout << qPrintable(line) << std::endl;
}

[[noreturn]] void Fail(const QString& what) {
    std::cerr << "Driver: " << qPrintable(what) << std::endl;
    std::_Exit(1);
}

QWidget* BoxOf(const QWidget& window, const QString& label) {
    for (int i = 0;; ++i) {
        const QString name = QString("cmdParLabel(%1)").arg(i);
        if (window.findChild<QWidget*>(name) == nullptr)
            Fail("no label " + label);
        if (hands::Control(window, name)->isVisible() && hands::TextOf(window, name) == label)
            return hands::Control(window, QString("txtParValue(%1)").arg(i));
    }
}

void Type(const QWidget& window, const QString& label, const QString& text) {
    hands::TypeInto(window, BoxOf(window, label)->objectName(), text);
}

// Without a window manager no window becomes active when another one closes.
void ChooseMenu(QMainWindow& window, const QStringList& captions) {
    window.activateWindow();
    (void)QTest::qWaitForWindowActive(&window);
    hands::ChooseMenu(*window.menuBar(), captions);
}

void NameFile(const QString& path) {
    hands::WhenModal("frmCmdialog", [path](QWidget& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });
}

void Solve(QMainWindow& window) {
    hands::WhenModal("frmNewWindow", [](QWidget& question) {
        hands::Click(question, "optWindow(0)");
        hands::Click(question, "cmdCont");
    });
    ChooseMenu(window, {"&Parametric Tests", "&Student's t-test", "&Unpaired"});
    QWidget* options = hands::TopWindow("frmShowSmp");
    if (options == nullptr)
        Fail("no options");
    hands::Click(*options, "optTails(1)");
    hands::Click(*options, "optIntPar0(1)");
    hands::Click(*options, "optIntPar1(2)");
    hands::Click(*options, "cmdOK");
    // The decimal sign of the user.
    const QString point = QLocale().decimalPoint();
    Type(window, "S&ignificance Level", "0" + point + "05");
    Type(window, "&Power", "0" + point + "8");
    Type(window, "H&0: Mean 2 - Mean 1", "0");
    Type(window, "H1: M&ean 2 - Mean 1", "0" + point + "5");
    Type(window, "&Standard Deviation", "1");
    Type(window, "Sample Size &2 / Sample Size 1", "1");
    const QString box = BoxOf(window, "Sample Size &1")->objectName();
    hands::Click(window, QString(box).replace("txtParValue", "cmdParLabel"));
    Print("size " + hands::TextOf(window, box));
}

void Save(QMainWindow& window) {
    NameFile(Folder().filePath("plan.dim"));
    ChooseMenu(window, {"  &File ", "Save &Analysis"});
}

void ReadHelp(QMainWindow& window) {
    ChooseMenu(window, {"&Help", "&Contents"});
    QWidget* help = hands::TopWindow("frmHelp");
    if (help == nullptr)
        Fail("no help");
    auto& page = *hands::Control<QTextBrowser>(*help, "txtPage");
    constexpr qsizetype shown = 40;
    Print("help " + page.toPlainText().section('\n', 0, 0).left(shown));
    help->close();
}

void Validate(QMainWindow& window) {
    hands::WhenModal("frmAbout", [](QWidget& about) {
        NameFile(Folder().filePath("validation.pdf"));
        hands::WhenModal("frmValidate", [](QWidget& validation) {
            constexpr int patience = 120000; // milliseconds
            auto& bar = *hands::Control<QProgressBar>(validation, "pgrProgress");
            if (!QTest::qWaitFor([&bar] { return bar.isHidden(); }, patience))
                Fail("the validation does not end");
            Print("validation " + hands::TextOf(validation, "lblResult").section('\n', 0, 0));
            hands::Click(validation, "cmdOK");
        });
        hands::Click(about, "cmdValidate");
        hands::Click(about, "cmdOK");
    });
    ChooseMenu(window, {"&Help", "&About..."});
}

void TellOpened(QMainWindow& window) {
    if (!QTest::qWaitFor([&window] { return window.findChild<QWidget*>("txtParValue(4)"); }))
        Fail("nothing is open");
    Print("size " + hands::TextOf(window, BoxOf(window, "Sample Size &1")->objectName()));
    // An analysis that was just opened counts as changed.
    hands::WhenModal("msgBox", [](QWidget& box) {
        hands::Click(*qobject_cast<QMessageBox*>(&box)->button(QMessageBox::No));
    });
}

// Waits for the main window, does the task and closes the program.
class Driver : public QObject {
  public:
    explicit Driver(QString task) : task_(std::move(task)) {
        connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
        constexpr int betweenLooks = 20; // milliseconds
        timer_.start(betweenLooks);
    }

  private:
    void Look() {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (auto* window = qobject_cast<QMainWindow*>(each);
                window != nullptr && window->objectName() == "frmMain" && window->isVisible()) {
                timer_.stop();
                Drive(*window);
                return;
            }
    }

    void Drive(QMainWindow& window) {
        if (task_ == "solve") {
            Solve(window);
            Save(window);
            ReadHelp(window);
            Validate(window);
        } else if (task_ == "open") {
            TellOpened(window);
        } else {
            Fail("no task " + task_);
        }
        window.close();
    }

    QString task_;
    QTimer timer_;
};

} // namespace

} // namespace quorvanta

class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

  public:
    QObject* create(const QString& /*key*/, const QString& task) override {
        return new quorvanta::Driver(task);
    }
};

#include "driver.moc"
