// The Qt application of the program.
#pragma once

#include <QApplication>

namespace quorvanta {

class Application : public QApplication {
    Q_OBJECT

  public:
    Application(int& argc, char** argv);

    // The one place where a run-time error is caught: the handling of the event ends, the error
    // is told, and the program lives on with every typed value in place.
    bool notify(QObject* receiver, QEvent* event) override;

  private:
    static void TellRunTimeError(const char* name);
};

} // namespace quorvanta
